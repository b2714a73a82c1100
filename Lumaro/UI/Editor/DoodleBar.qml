// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Inks, three widths and the eraser. A click on it does not take the keyboard focus from the drawing.
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

    width: row.width + 2 * Theme.size.medium
    height: row.height + 2 * Theme.size.small
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

    // In two rows where one has no room.
    Flow {
        id: row

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
                    rust: qsTr("rust"),
                    sun: qsTr("sun"),
                    moss: qsTr("moss"),
                    mint: qsTr("mint"),
                    lagoon: qsTr("lagoon"),
                    sky: qsTr("sky"),
                    night: qsTr("night"),
                    plum: qsTr("plum"),
                    rose: qsTr("rose"),
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
