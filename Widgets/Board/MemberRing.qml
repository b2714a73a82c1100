// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Around an item that is selected with others, or that the keys have come to.
Rectangle {
    radius: Theme.size.smallRadius
    color: "transparent"
    border.width: 1.5
    border.color: Theme.color.accent
    opacity: 0.6
    antialiasing: true
}
