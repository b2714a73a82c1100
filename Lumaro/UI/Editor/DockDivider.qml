// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Between two groups of the dock.
Rectangle {
    width: 1
    height: 24
    color: Theme.color.line
}
