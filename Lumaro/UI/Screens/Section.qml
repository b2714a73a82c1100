// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A part of a page under its heading, set off by a hairline.
Column {
    id: section

    required property string heading
    property bool isFirst: false

    width: parent ? parent.width : 0
    spacing: Theme.size.medium

    Rectangle {
        visible: !section.isFirst
        width: parent.width
        height: 1
        color: Theme.color.line
    }
    Title {
        width: parent.width
        topPadding: section.isFirst ? 0 : Theme.size.tiny
        text: section.heading
        isSmall: true
    }
}
