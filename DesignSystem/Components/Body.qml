// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// What is read.
Text {
    property bool isSoft: false
    property bool isSmall: false

    color: isSoft ? Theme.color.softInk : Theme.color.ink
    font.pixelSize: isSmall ? Theme.size.captionText : Theme.size.bodyText
    lineHeight: 1.25
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
