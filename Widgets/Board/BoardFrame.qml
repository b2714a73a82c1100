// SPDX-License-Identifier: Apache-2.0
import QtQml

/// Where the canvas lies in a view, and what all its items must know of that view.
QtObject {
    property real width
    property real height
    /// Room above and below that is the view's own.
    property real topMargin: 0
    property real bottomMargin: 0
    property bool isFilling: false
    property bool isPaused: false
    property string selected
    /// The note that somebody writes on, over the board.
    property string written

    /// View pixels for one point of the canvas, and where its top left corner lies.
    readonly property real pointScale: isFilling ? Math.max(width / 1600, inner / 1000) : Math.min(width / 1600, inner / 1000)
    readonly property point origin: Qt.point((width - 1600 * pointScale) / 2, topMargin + (inner - 1000 * pointScale) / 2)
    readonly property real inner: height - topMargin - bottomMargin
    /// What of the canvas is cut off on either side; what hangs on it is drawn together to stay in sight.
    readonly property real hiddenX: Math.max(0, -origin.x / pointScale)
    readonly property real hiddenY: Math.max(0, -origin.y / pointScale)
}
