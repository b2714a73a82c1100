// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem

/// Something that is on or off, with a word on what that means.
T.Switch {
    id: control

    property string helper

    function press(): void {
        control.toggle();
        control.clicked();
    }

    implicitWidth: 320
    implicitHeight: Math.ceil(Math.max(Theme.size.control, words.implicitHeight + 12)) // hairlines below lie on whole pixels
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.description: helper
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: control.press()
    Accessible.onToggleAction: control.press()
    Keys.onReturnPressed: control.press()
    Keys.onEnterPressed: control.press()

    Column {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: 2 // lines are higher than their letters
        width: parent.width - 48 - Theme.size.large

        Body {
            width: parent.width
            text: control.text
            Accessible.ignored: true
        }
        Body {
            visible: control.helper !== ""
            width: parent.width
            text: control.helper
            isSmall: true
            isSoft: true
            Accessible.ignored: true
        }
    }

    indicator: Rectangle {
        x: control.width - width
        anchors.verticalCenter: parent.verticalCenter
        width: 48
        height: 28
        radius: 14
        color: control.checked ? Theme.color.accent : Theme.color.pressed
        border.width: 1
        border.color: control.checked ? Theme.color.accentPressed : Theme.color.away

        Rectangle {
            x: control.checked ? parent.width - width - 4 : 4
            anchors.verticalCenter: parent.verticalCenter
            width: 20
            height: 20
            radius: 10
            color: control.checked ? Theme.color.onAccent : Theme.color.softInk

            Behavior on x {
                enabled: !Theme.isMotionReduced

                SpringAnimation {
                    spring: Theme.motion.spring
                    damping: Theme.motion.damping
                    epsilon: 0.1
                }
            }
        }
        FocusRing {
            isShown: control.visualFocus
            around: 14
        }
    }
}
