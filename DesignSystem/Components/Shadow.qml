// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// The shadow of the sheet that it is put into, drawn behind it. A sheet is at least `2 * (radius + height)` on a side.
BorderImage {
    id: shadow

    property int radius: Theme.size.radius
    /// How far the sheet lies above what is behind it.
    property int lift: 12
    readonly property int corner: 3 * lift + radius

    z: -1
    anchors.fill: parent
    anchors.margins: -2 * lift
    border {
        left: shadow.corner
        top: shadow.corner
        right: shadow.corner
        bottom: shadow.corner
    }
    source: "image://shadow/" + radius + "/" + lift + "?" + (Theme.isDark ? "0a0705" : "4a3420")
}
