// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// The place of one digit.
Rectangle {
    id: box

    required property string digits
    required property int place
    property bool isNext: false
    property bool isFaulty: false

    width: 54
    height: 68
    radius: Theme.size.radius - 2
    color: Theme.color.raised
    border.width: isNext ? 2 : 1
    border.color: isNext || isFaulty ? Theme.color.accent : Theme.color.line

    Text {
        anchors.centerIn: parent
        text: box.digits.charAt(box.place)
        color: Theme.color.ink
        textFormat: Text.PlainText
        font.pixelSize: Theme.size.displayText
        font.weight: Font.ExtraBold
    }
}
