// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A strip of tape that holds a sheet.
Rectangle {
    width: 96
    height: 26
    rotation: -1.6
    antialiasing: true
    color: Theme.isDark ? Qt.rgba(0.55, 0.43, 0.33, 0.85) : Qt.rgba(0.93, 0.78, 0.62, 0.82)

    Rectangle { // where the light falls on it
        width: parent.width
        height: 1
        antialiasing: true
        color: Theme.isDark ? Qt.rgba(1, 0.9, 0.78, 0.25) : Qt.rgba(1, 0.96, 0.88, 0.8)
    }
}
