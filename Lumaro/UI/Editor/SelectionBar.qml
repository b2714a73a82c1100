// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// A slip of paper under the selected item with what can be done to it.
Rectangle {
    id: bar

    required property BoardView board
    required property EditorView editor
    readonly property selectedItem item: editor.selected
    readonly property bool isBlock: item.kind === "pomodoro"

    signal editWanted
    signal menuWanted

    readonly property real middle: board.origin.x + board.pointScale * item.centerX
    readonly property real below: board.origin.y + board.pointScale * (item.centerY + item.height / 2) + 28
    readonly property real above: board.origin.y + board.pointScale * (item.centerY - item.height / 2) - 64 - height

    x: Math.round(Math.max(Theme.size.small, Math.min(board.width - width - Theme.size.small, middle - width / 2)))
    y: Math.round(below + height + 96 < board.height ? below : Math.max(Theme.size.small, above))
    width: row.implicitWidth + 2 * Theme.size.tiny
    height: row.implicitHeight + 2 * Theme.size.tiny
    radius: Theme.size.radius
    color: Theme.color.raised
    border.width: 1
    border.color: Theme.color.edge

    Shadow {
        radius: bar.radius
        lift: 6
    }

    // The glass behind it is not meant.
    MouseArea {
        anchors.fill: parent
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 2

        Chip {
            visible: bar.isBlock && bar.item.canJoin
            text: qsTr("join")
            iconName: "users"
            onClicked: bar.editor.joinBlock()
        }
        Chip {
            visible: bar.isBlock && bar.item.canStart
            text: qsTr("15 minutes")
            onClicked: bar.editor.startBlock(15)
        }
        Chip {
            visible: bar.isBlock && bar.item.canStart
            text: qsTr("25 minutes")
            onClicked: bar.editor.startBlock(25)
        }
        Chip {
            visible: bar.isBlock && bar.item.canStart
            text: qsTr("50 minutes")
            onClicked: bar.editor.startBlock(50)
        }
        Chip {
            visible: bar.isBlock && bar.item.canCoolDown
            text: qsTr("cool down")
            onClicked: bar.editor.coolDown()
        }
        Chip {
            visible: bar.isBlock && bar.item.canRest
            text: qsTr("rest")
            onClicked: bar.editor.rest()
        }
        PaperSwatches {
            visible: bar.item.kind === "note"
            chosen: bar.item.paper
            onChose: name => bar.editor.setPaper(name)
        }
        IconButton {
            visible: ["note", "photo", "countdown", "doodle"].includes(bar.item.kind)
            text: qsTr("edit")
            hint: qsTr("Enter")
            iconName: "pencil"
            onClicked: bar.editWanted()
        }
        IconButton {
            visible: bar.item.canKeep
            checkable: true
            checked: bar.item.isKept
            text: bar.item.isKept ? qsTr("let it go after a day") : qsTr("keep it up")
            hint: "K"
            iconName: "heart"
            onClicked: bar.editor.setKept(!bar.item.isKept)
        }
        IconButton {
            text: qsTr("to the front")
            hint: "F"
            iconName: "bring-to-front"
            onClicked: bar.editor.bringToFront()
        }
        IconButton {
            text: qsTr("take down")
            hint: qsTr("Delete")
            iconName: "trash-2"
            onClicked: bar.editor.takeDown()
        }
    }
}
