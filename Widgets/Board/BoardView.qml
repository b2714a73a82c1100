// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets

/// The board, as large as there is room: whole, or covering all of it as on a desktop. Everything that hangs on it comes
/// from `rows`; nothing here is drawn anew while nothing changes.
Item {
    id: view

    required property var rows
    property string background: "butter"
    property bool isThreadTied: false
    /// What hangs has the board's paper behind it, and nothing otherwise.
    property bool hasPaper: true
    property alias topMargin: frame.topMargin
    property alias bottomMargin: frame.bottomMargin
    property alias sideMargin: frame.sideMargin
    property alias isFilling: frame.isFilling
    property alias isPaused: frame.isPaused
    property alias weatherMoves: frame.weatherMoves
    property alias selected: frame.selected
    property alias members: frame.members
    property alias walkedTo: frame.walkedTo
    property alias written: frame.written
    property alias isRead: frame.isRead
    property alias hasKeys: frame.hasKeys
    readonly property alias canvas: frame.canvas
    readonly property real pointScale: canvas.scale
    /// Pixels of the screen for one point of the canvas: as sharp as pictures have to be.
    readonly property real density: pointScale * Screen.devicePixelRatio

    function drawThread(): void {
        if (Theme.isMotionReduced || isPaused) {
            thread.progress = 1;
        } else {
            draw.restart();
        }
    }

    BoardFrame {
        id: frame

        width: view.width
        height: view.height
    }

    BoardBackground {
        anchors.fill: parent
        visible: view.hasPaper
        background: view.background
        dark: Theme.isDark
    }

    RedThread {
        id: thread

        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
        }
        height: Math.round(190 * view.pointScale)
        visible: view.isThreadTied
        pointScale: view.pointScale
        tied: view.isThreadTied
        progress: 1
    }

    NumberAnimation {
        id: draw

        target: thread
        property: "progress"
        from: 0
        to: 1
        duration: Theme.motion.thread
        easing.type: Easing.InOutSine
    }

    BoardCanvas {
        anchors.fill: parent
        rows: view.rows
        frame: frame
    }
}
