// SPDX-License-Identifier: Apache-2.0
import QtQml
import Widgets

/// Where the canvas lies in a view, and what all its items must know of that view.
QtObject {
    property real width
    property real height
    /// Room around that is the view's own.
    property real topMargin: 0
    property real bottomMargin: 0
    property real sideMargin: 0
    property bool isFilling: false
    property bool isPaused: false
    /// Whether rain and snow fall before the windows.
    property bool weatherMoves: false
    property string selected
    /// Several items that are selected together, by their ids.
    property list<string> members
    /// The item that the keys have come to while they gather several.
    property string walkedTo
    /// Whether screen readers are to read it: not where it hangs a second time.
    property bool isRead: true
    /// The keyboard focus is with it, so a screen reader is where the selection is.
    property bool hasKeys: false
    /// The note that somebody writes on, over the board.
    property string written

    readonly property rect area: Qt.rect(sideMargin, topMargin, width - 2 * sideMargin, height - topMargin - bottomMargin)
    readonly property canvasInView canvas: isFilling ? VirtualCanvas.aspectFill(area) : VirtualCanvas.aspectFit(area)

    /// How far from its place something is drawn so that all of it is in sight, in points of the canvas: hands need
    /// things where they are.
    function inwardX(x: real, reach: real): real {
        return isFilling ? canvas.inwardX(x, reach) : 0;
    }
    function inwardY(y: real, reach: real): real {
        return isFilling ? canvas.inwardY(y, reach) : 0;
    }
}
