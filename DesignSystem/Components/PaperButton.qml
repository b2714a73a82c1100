// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A button with a text, and an icon before it if it has one.
Pressable {
    id: control

    enum Kind { Primary, Plain, Quiet }

    property int kind: PaperButton.Plain
    property string iconName
    property color ink: {
        if (kind === PaperButton.Primary)
            return Theme.color.onAccent;
        return kind === PaperButton.Quiet && iconName === "" ? Theme.color.accent : Theme.color.ink;
    }

    implicitWidth: words.implicitWidth + leftPadding + rightPadding
    implicitHeight: Theme.size.control + (kind === PaperButton.Quiet ? 0 : 4)
    leftPadding: kind === PaperButton.Quiet ? Theme.size.medium : Theme.size.large
    rightPadding: leftPadding

    Row {
        id: words

        anchors.centerIn: parent
        anchors.verticalCenterOffset: control.kind === PaperButton.Quiet ? 0 : -1
        spacing: Theme.size.small

        Icon {
            visible: control.iconName !== ""
            name: control.iconName === "" ? "check" : control.iconName
            side: 18
            ink: control.ink
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: control.text
            color: control.ink
            textFormat: Text.PlainText
            font.pixelSize: Theme.size.bodyText
            font.weight: Font.DemiBold
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    background: Item {
        Rectangle { // the lip of the paper
            visible: control.kind !== PaperButton.Quiet
            anchors.fill: parent
            anchors.topMargin: 2
            radius: Theme.size.radius
            color: {
                if (control.kind === PaperButton.Primary)
                    return Qt.darker(Theme.color.accent, 1.25);
                return Theme.isDark ? Qt.darker(Theme.color.surface, 1.4) : Theme.color.line;
            }
        }
        Rectangle {
            anchors.fill: parent
            anchors.bottomMargin: control.kind === PaperButton.Quiet ? 0 : 2
            radius: Theme.size.radius
            border.width: control.kind === PaperButton.Plain ? 1 : 0
            border.color: Theme.color.line
            color: {
                if (control.kind === PaperButton.Primary)
                    return control.down || control.hovered ? Theme.color.accentPressed : Theme.color.accent;
                if (control.down || control.hovered)
                    return Theme.color.pressed;
                return control.kind === PaperButton.Plain ? Theme.color.raised : "transparent";
            }
        }
        FocusRing {
            isShown: control.visualFocus
        }
    }
}
