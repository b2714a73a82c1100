// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A dab of a colour to choose; `text` is the colour's name.
Pressable {
    id: control

    required property color swatch

    implicitWidth: Theme.size.control
    implicitHeight: Theme.size.control
    checkable: true
    give: 0.9
    Accessible.role: Accessible.RadioButton

    Tip {
        text: control.text
        isWanted: (control.hovered || control.visualFocus) && !control.down
    }

    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: 36
            height: 36
            radius: 18
            color: "transparent"
            border.width: 2
            border.color: control.checked ? Theme.color.accent : Theme.color.line
            visible: control.checked || control.hovered
        }
        Rectangle {
            anchors.centerIn: parent
            width: 26
            height: 26
            radius: 13
            color: control.swatch
            border.width: 1
            border.color: Qt.darker(control.swatch, 1.18)
        }
        FocusRing {
            isShown: control.visualFocus
            anchors.margins: -1
            around: 17
        }
    }
}
