// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Cuts a sticker out of a picture: strokes where the edge that was guessed is wrong, or a frame around what is wanted.
Sheet {
    id: sheet

    required property CutOutSession session
    /// What a stroke does: `frame`, `keep` or `drop`.
    property string tool: session.hasEdge ? "keep" : "frame"
    property string chosenTool

    onChosenToolChanged: tool = chosenTool

    title: qsTr("cut it out")
    paperWidth: Math.min(760, parent ? parent.width - 2 * Theme.size.large : 760)
    visible: session.isOpen
    onOpened: board.forceActiveFocus()
    onClosed: {
        if (session.isOpen) {
            session.close();
        }
    }

    Body {
        width: parent.width
        isSoft: true
        text: {
            switch (sheet.tool) {
            case "keep":
                return sheet.session.hasEdge ? qsTr("this is what we'd cut out. paint over what belongs to it too.") : qsTr("paint over what you want to keep.");
            case "drop":
                return qsTr("paint over what should go.");
            }
            return sheet.session.hasEdge ? qsTr("draw a frame around what you want to keep.") : qsTr("nothing stands out here — draw a frame around what you want to keep.");
        }
    }

    CutOutBoard {
        id: board

        // What is left in the window for it, without scrolling.
        readonly property real most: Math.max(160, (sheet.parent ? sheet.parent.height : 700) - 284)

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, most * sheet.session.aspect)
        height: width / sheet.session.aspect
        session: sheet.session
        tool: sheet.tool
        onFramed: sheet.chosenTool = "keep"
        onAccepted: if (take.enabled) sheet.session.take()
    }

    Item {
        width: parent.width
        height: Math.max(tools.height, take.height)

        Flow {
            id: tools

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - take.width - Theme.size.medium
            spacing: Theme.size.tiny

            Repeater {
                model: [["keep", qsTr("keep"), "plus"], ["drop", qsTr("leave out"), "minus"], ["frame", qsTr("frame"), "square-dashed"]]

                Chip {
                    required property var modelData

                    text: modelData[1]
                    iconName: modelData[2]
                    checkable: true
                    checked: sheet.tool === modelData[0]
                    onClicked: sheet.chosenTool = modelData[0]
                }
            }
            IconButton {
                iconName: "undo-2"
                text: qsTr("take the last one back")
                hint: qsTr("Ctrl Z")
                enabled: sheet.session.canUndo
                onClicked: sheet.session.undo()
            }
            IconButton {
                iconName: "minus"
                text: qsTr("a finer brush")
                hint: "-"
                enabled: sheet.tool !== "frame"
                onClicked: board.resizeBrush(1 / 1.3)
            }
            Item {
                width: 26
                height: Theme.size.control

                Rectangle {
                    anchors.centerIn: parent
                    width: Math.min(26, Math.max(3, board.width * board.brush))
                    height: width
                    radius: width / 2
                    color: Theme.color.softInk
                }
            }
            IconButton {
                iconName: "plus"
                text: qsTr("a broader brush")
                hint: "+"
                enabled: sheet.tool !== "frame"
                onClicked: board.resizeBrush(1.3)
            }
        }
        PaperButton {
            id: take

            anchors.right: parent.right
            kind: PaperButton.Primary
            iconName: "scissors"
            text: sheet.session.isWorking ? qsTr("looking for the edge…") : qsTr("stick it up")
            enabled: sheet.session.hasEdge && !sheet.session.isWorking
            onClicked: sheet.session.take()
        }
    }
}
