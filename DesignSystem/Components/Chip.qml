// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A small paper label to press: one of several, or a short act. It answers around itself too.
Pressable {
    id: control

    property string iconName
    readonly property color ink: checked ? Theme.color.onAccent : Theme.color.ink

    implicitWidth: words.implicitWidth + 2 * Theme.size.medium
    implicitHeight: Theme.size.control
    Accessible.role: checkable ? Accessible.RadioButton : Accessible.Button

    Row {
        id: words

        anchors.centerIn: parent
        spacing: 6

        Icon {
            visible: control.iconName !== ""
            name: control.iconName === "" ? "check" : control.iconName
            side: 15
            ink: control.ink
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: control.text
            color: control.ink
            textFormat: Text.PlainText
            font.pixelSize: Theme.size.captionText
            font.weight: Font.DemiBold
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.topMargin: 5
            anchors.bottomMargin: 5
            radius: height / 2
            color: {
                if (control.checked)
                    return Theme.color.accent;
                return control.down || control.hovered ? Theme.color.pressed : Theme.color.raised;
            }
            border.width: control.checked ? 0 : 1
            border.color: Theme.color.line

            FocusRing {
                isShown: control.visualFocus
                around: 15
            }
        }
    }
}
