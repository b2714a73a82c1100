// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Inks, three widths and the eraser. A click on it does not take the keyboard focus from the drawing.
Rectangle {
    id: bar

    required property PenView pen
    property string ink: "ink"
    property real penWidth: 6
    property bool isErasing: false
    /// Whether the ink is to go, once somebody has said so.
    property bool isAsking: false

    /// The question was answered: the keys are the drawing's again.
    signal answered

    function begin(): void {
        isErasing = false;
        isAsking = false;
    }
    /// Asks once when there is ink to lose.
    function letGoWanted(): void {
        isAsking = pen.isChanged;
        if (isAsking) {
            question.takeKeys();
        } else {
            pen.letGo();
        }
    }

    function take(width: real): void {
        penWidth = width;
        isErasing = false;
    }

    width: (isAsking ? question.width : row.width) + 2 * Theme.size.medium
    height: (isAsking ? question.height : row.height) + 2 * Theme.size.small
    radius: Theme.size.largeRadius
    color: Theme.color.surface
    border.width: 1
    border.color: Theme.color.edge
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("pencil case")

    Shadow {
        radius: bar.radius
        lift: 10
    }

    MouseArea {
        anchors.fill: parent
    }

    LetInkGo {
        id: question

        visible: bar.isAsking
        anchors.centerIn: parent
        room: bar.parent?.width ?? 0
        onAgreed: bar.pen.letGo()
        onStayed: {
            bar.isAsking = false;
            bar.answered();
        }
    }

    // In two rows where one has no room.
    Flow {
        id: row

        visible: !bar.isAsking

        readonly property real inOneRow: {
            let sum = -spacing;
            for (let i = 0; i < visibleChildren.length; ++i)
                sum += visibleChildren[i].width + spacing;
            return sum;
        }

        anchors.centerIn: parent
        width: Math.min(inOneRow, (bar.parent?.width ?? 0) - 2 * (Theme.size.medium + Theme.size.large))
        spacing: Theme.size.tiny

        Swatches {
            readonly property var called: ({
                    ink: qsTr("ink"),
                    coral: qsTr("coral"),
                    sun: qsTr("sun"),
                    mint: qsTr("mint"),
                    sky: qsTr("sky"),
                    plum: qsTr("plum"),
                    chalk: qsTr("chalk")
                })

            names: [...Theme.inks()]
            labels: {
                const labels = [];
                for (const name of names) {
                    labels.push(called[name]);
                }
                return labels;
            }
            colors: {
                const colors = [];
                for (const name of names) {
                    colors.push(Theme.inkColor(name));
                }
                return colors;
            }
            chosen: bar.isErasing ? "" : bar.ink
            onChose: name => {
                bar.ink = name;
                bar.isErasing = false;
            }
        }
        Chip {
            text: qsTr("fine")
            focusPolicy: Qt.TabFocus
            checkable: true
            checked: !bar.isErasing && bar.penWidth === 3
            onClicked: bar.take(3)
        }
        Chip {
            text: qsTr("pen")
            focusPolicy: Qt.TabFocus
            checkable: true
            checked: !bar.isErasing && bar.penWidth === 6
            onClicked: bar.take(6)
        }
        Chip {
            text: qsTr("brush")
            focusPolicy: Qt.TabFocus
            checkable: true
            checked: !bar.isErasing && bar.penWidth === 14
            onClicked: bar.take(14)
        }
        IconButton {
            text: qsTr("eraser")
            focusPolicy: Qt.TabFocus
            hint: "E"
            iconName: "eraser"
            checkable: true
            checked: bar.isErasing
            onClicked: bar.isErasing = checked
        }
        IconButton {
            text: qsTr("take the stroke back")
            focusPolicy: Qt.TabFocus
            hint: qsTr("Ctrl Z")
            iconName: "undo-2"
            enabled: bar.pen.canUndo
            onClicked: bar.pen.undo()
        }
        IconButton {
            text: qsTr("draw it again")
            focusPolicy: Qt.TabFocus
            hint: qsTr("Ctrl Shift Z")
            iconName: "redo-2"
            enabled: bar.pen.canRedo
            onClicked: bar.pen.redo()
        }
        PaperButton {
            text: qsTr("let it go")
            focusPolicy: Qt.TabFocus
            kind: PaperButton.Quiet
            onClicked: bar.letGoWanted()
        }
        PaperButton {
            text: qsTr("stick it up")
            focusPolicy: Qt.TabFocus
            kind: PaperButton.Primary
            onClicked: bar.pen.finish()
        }
    }
}
