// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The hours or the minutes of a time: arrows and the wheel turn them.
Row {
    id: hand

    required property int value
    /// What people call it.
    required property string name
    /// How far one press goes.
    property int step: 1

    signal turned(by: int)

    IconButton {
        iconName: "minus"
        text: qsTr("earlier")
        focusPolicy: Qt.NoFocus
        activeFocusOnTab: false
        Accessible.ignored: true
        onClicked: hand.turned(-hand.step)
    }
    Item {
        id: figure

        width: 34
        height: Theme.size.control
        activeFocusOnTab: true
        Accessible.role: Accessible.SpinBox
        Accessible.focusable: true
        Accessible.name: hand.name + " " + digits.text
        Accessible.onIncreaseAction: hand.turned(hand.step)
        Accessible.onDecreaseAction: hand.turned(-hand.step)
        Keys.onUpPressed: hand.turned(hand.step)
        Keys.onDownPressed: hand.turned(-hand.step)
        Keys.onRightPressed: hand.turned(1)
        Keys.onLeftPressed: hand.turned(-1)

        Text {
            id: digits

            anchors.centerIn: parent
            text: String(hand.value).padStart(2, "0")
            textFormat: Text.PlainText
            color: Theme.color.ink
            font.pixelSize: Theme.size.titleText
            font.weight: Font.DemiBold
        }
        FocusRing {
            anchors.margins: 2
            isShown: figure.activeFocus
            around: Theme.size.smallRadius
        }
        WheelHandler {
            onWheel: event => hand.turned(event.angleDelta.y > 0 ? hand.step : -hand.step)
        }
    }
    IconButton {
        iconName: "plus"
        text: qsTr("later")
        focusPolicy: Qt.NoFocus
        activeFocusOnTab: false
        Accessible.ignored: true
        onClicked: hand.turned(hand.step)
    }
}
