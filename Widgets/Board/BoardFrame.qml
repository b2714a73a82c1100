// SPDX-License-Identifier: Apache-2.0
import QtQml
import Widgets

/// Where the canvas lies in a view, and what all its items must know of that view.
QtObject {
    property real width
    property real height
    /// Room above and below that is the view's own.
    property real topMargin: 0
    property real bottomMargin: 0
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

    readonly property rect area: Qt.rect(0, topMargin, width, height - topMargin - bottomMargin)
    readonly property canvasInView canvas: isFilling ? VirtualCanvas.aspectFill(area) : VirtualCanvas.aspectFit(area)
}
