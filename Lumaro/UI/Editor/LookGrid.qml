// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// Papers, or pins and tapes, as samples to choose from, each with its name.
Grid {
    id: grid

    required property var names
    /// What people call each, by its name.
    required property var labels
    property bool isOfPins: false
    property string chosen
    /// What pins and tapes are shown to go with.
    property string paper

    signal chose(name: string)

    function takeKeys(): void {
        looks.itemAt(Math.max(0, names.indexOf(chosen))).forceActiveFocus(Qt.PopupFocusReason);
    }

    columns: 7
    Accessible.role: Accessible.Grouping

    Repeater {
        id: looks

        model: grid.names

        Pressable {
            id: look

            required property string modelData
            readonly property LookGrid owner: parent as LookGrid

            implicitWidth: 44
            implicitHeight: 44
            checkable: true
            checked: owner?.chosen === modelData
            give: 0.9
            text: owner?.labels[modelData] ?? modelData
            Accessible.role: Accessible.RadioButton
            onClicked: {
                checked = Qt.binding(() => owner?.chosen === modelData);
                owner.chose(modelData);
            }

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
                anchors.centerIn: parent
                width: 34
                height: 34
                paper: look.owner?.isOfPins ? look.owner.paper : look.modelData
                pin: look.owner?.isOfPins ? look.modelData : ""
                dark: Theme.isDark
            }
            Tip {
                text: look.text
                isWanted: (look.hovered || look.visualFocus) && !look.down
            }
        }
    }
}
