// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// What somebody might have written with a pen.
Text {
    property bool isLarge: false

    color: Theme.color.ink
    font.family: Theme.hand
    font.pixelSize: isLarge ? Math.round(Theme.size.handText * 1.75) : Theme.size.handText
    font.weight: Font.Bold
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    Accessible.role: isLarge ? Accessible.Heading : Accessible.StaticText
    Accessible.name: text
}
