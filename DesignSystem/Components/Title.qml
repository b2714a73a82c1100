// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// What a sheet, or a part of one, is about.
Text {
    property bool isSmall: false

    color: Theme.color.ink
    font.pixelSize: isSmall ? Theme.size.bodyText : Theme.size.titleText
    font.weight: Font.ExtraBold
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
