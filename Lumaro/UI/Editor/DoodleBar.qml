// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The pencil case: inks, three widths, the eraser. Pointing at it leaves the keys with the drawing.
Rectangle {
    id: bar

    required property EditorView editor
    property string ink: "ink"
    property real penWidth: 6
    property bool isErasing: false

    function take(width: real): void {
        penWidth = width;
        isErasing = false;
    }

    width: row.implicitWidth + 2 * Theme.size.medium
    height: row.implicitHeight + 2 * Theme.size.small
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

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.size.tiny

        Swatches {
            names: [...Theme.inks()]
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
        PaperButton {
            text: qsTr("leave it")
            focusPolicy: Qt.TabFocus
            kind: PaperButton.Quiet
            onClicked: bar.editor.cancelDoodle()
        }
        PaperButton {
            text: qsTr("stick it up")
            focusPolicy: Qt.TabFocus
            kind: PaperButton.Primary
            onClicked: bar.editor.finishDoodle()
        }
    }
}
