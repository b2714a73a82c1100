// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A button that is an icon, with its name in a slip of paper over it while the pointer or the keys are there.
Pressable {
    id: control

    required property string iconName
    /// Behind the name, such as the key that does the same.
    property string hint
    property color ink: checked ? Theme.color.onAccent : Theme.color.ink
    property bool isTipBelow: false

    implicitWidth: Theme.size.control
    implicitHeight: Theme.size.control
    give: 0.9

    Icon {
        anchors.centerIn: parent
        name: control.iconName
        ink: control.ink
    }
    Tip {
        text: control.hint === "" ? control.text : control.text + "  ·  " + control.hint
        isWanted: control.enabled && (control.hovered || control.visualFocus) && !control.down
        isBelow: control.isTipBelow
    }

    background: Rectangle {
        radius: Theme.size.radius
        color: {
            if (control.checked)
                return Theme.color.accent;
            return control.down || control.hovered ? Theme.color.pressed : "transparent";
        }

        FocusRing {
            isShown: control.visualFocus
        }
    }
}
