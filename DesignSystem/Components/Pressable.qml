// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem

/// What all buttons have in common: Enter does what Space does, they give way under a finger, and have a name.
T.Button {
    id: control

    /// How small it gets under a finger.
    property real give: 0.96

    function press(): void {
        if (control.checkable)
            control.toggle();
        control.clicked();
    }

    scale: down && !Theme.isMotionReduced ? give : 1
    opacity: enabled ? 1 : 0.5
    hoverEnabled: true
    Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
    Accessible.name: text
    Accessible.checkable: checkable
    Accessible.checked: checked
    Accessible.onPressAction: control.press()
    Keys.onReturnPressed: control.press()
    Keys.onEnterPressed: control.press()

    Springy on scale {}
}
