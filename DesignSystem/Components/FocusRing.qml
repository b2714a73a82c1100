// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Around the control that the keys go to, when keys brought people there.
Rectangle {
    property bool isShown: false
    property real around: Theme.size.radius

    anchors.fill: parent
    anchors.margins: -4
    visible: isShown
    color: "transparent"
    radius: around + 4
    border.width: 2
    border.color: Theme.color.accent
}
