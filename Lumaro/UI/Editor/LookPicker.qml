// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem
import Widgets

/// The papers of notes, and the pins and tapes that hold them, to choose from. It comes up over the button that it lies
/// in, with the keys on it, and stays while people try.
T.Popup {
    id: picker

    property string paper
    property string pin

    signal chosePaper(name: string)
    signal chosePin(name: string)

    function label(name: string): string {
        return ({
                butter: qsTr("butter"),
                blush: qsTr("blush"),
                sage: qsTr("sage"),
                sky: qsTr("sky"),
                lilac: qsTr("lilac"),
                oat: qsTr("oat"),
                lined: qsTr("lined"),
                squared: qsTr("squared"),
                dotted: qsTr("dotted"),
                kraft: qsTr("kraft"),
                torn: qsTr("torn off"),
                brass: qsTr("brass pin"),
                coral: qsTr("coral pin"),
                mint: qsTr("mint pin"),
                ink: qsTr("dark pin"),
                pearl: qsTr("pearl pin"),
                plum: qsTr("plum pin"),
                heart: qsTr("a heart"),
                tape: qsTr("tape that goes with it"),
                tapeStripes: qsTr("striped tape"),
                tapeDots: qsTr("dotted tape"),
                tapeChecks: qsTr("checked tape"),
                tapeWaves: qsTr("wavy tape"),
                tapeKraft: qsTr("brown tape")
            })[name] ?? name;
    }

    component Look: Pressable {
        id: look

        property alias paper: sample.paper
        property alias pin: sample.pin

        implicitWidth: 44
        implicitHeight: 44
        checkable: true
        give: 0.9
        Accessible.role: Accessible.RadioButton

        Tip {
            text: look.text
            isWanted: (look.hovered || look.visualFocus) && !look.down
        }

        background: Item {
            Rectangle {
                anchors.fill: parent
                radius: Theme.size.smallRadius
                color: look.checked || look.hovered ? Theme.color.pressed : "transparent"
                border.width: look.checked ? 2 : 0
                border.color: Theme.color.accent

                FocusRing {
                    isShown: look.visualFocus
                }
            }
            NoteSwatch {
                id: sample

                anchors.centerIn: parent
                width: 34
                height: 34
                dark: Theme.isDark
            }
        }
    }

    parent: T.Overlay.overlay
    margins: Theme.size.small
    padding: Theme.size.medium
    focus: true
    modal: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    T.Overlay.modal: Item {}

    /// Over `near`, or under it where there is no room above.
    function openNear(near: Item): void {
        const at = near.mapToItem(parent, near.width / 2, 0);
        const above = at.y - implicitHeight - Theme.size.small;
        x = Math.round(at.x - implicitWidth / 2);
        y = Math.round(above >= Theme.size.small ? above : at.y + near.height + Theme.size.small);
        open();
        papers.itemAt(Math.max(0, all.papers.indexOf(paper))).forceActiveFocus(Qt.PopupFocusReason);
    }

    implicitWidth: content.implicitWidth + 2 * padding
    implicitHeight: content.implicitHeight + 2 * padding
    background: Rectangle {
        radius: Theme.size.radius
        color: Theme.color.raised
        border.width: 1
        border.color: Theme.color.edge

        Shadow {
            radius: Theme.size.radius
            lift: 10
        }
    }

    contentItem: Column {
        id: content

        spacing: Theme.size.small

        NoteSwatch {
            id: all

            visible: false
        }
        Body {
            text: qsTr("paper")
            color: Theme.color.softInk
        }
        Grid {
            columns: 7
            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("paper")

            Repeater {
                id: papers

                model: all.papers

                Look {
                    required property string modelData

                    text: picker.label(modelData)
                    paper: modelData
                    checked: picker.paper === modelData
                    onClicked: {
                        checked = Qt.binding(() => picker.paper === modelData);
                        picker.chosePaper(modelData);
                    }
                }
            }
        }
        Body {
            text: qsTr("pin or tape")
            color: Theme.color.softInk
        }
        Grid {
            columns: 7
            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("pin or tape")

            Repeater {
                model: all.pins

                Look {
                    required property string modelData

                    text: picker.label(modelData)
                    pin: modelData
                    paper: picker.paper
                    checked: picker.pin === modelData
                    onClicked: {
                        checked = Qt.binding(() => picker.pin === modelData);
                        picker.chosePin(modelData);
                    }
                }
            }
        }
    }
}
