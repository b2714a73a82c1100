// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Over everything that waits behind a sheet.
Rectangle {
    /// How dark it gets, of what the theme has for it.
    property real strength: 1
    readonly property color full: Theme.color.shade

    color: Qt.rgba(full.r, full.g, full.b, full.a * strength)

    Behavior on opacity {
        NumberAnimation {
            duration: Theme.motion.quick
        }
    }
}
