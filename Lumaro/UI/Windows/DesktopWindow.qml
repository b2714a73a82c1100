// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// The board behind the icons of one screen, which it covers. It shows the board and edits nothing.
Window {
    id: window

    required property BoardScene scene
    required property SettingsView settings
    property bool isPaused: false
    /// A picture is taken of it: nothing springs, turns or rains.
    property bool isStill: false
    /// What hangs is to be seen without the board's paper.
    property bool isOverOwn: false
    property alias weatherMoves: board.weatherMoves

    title: qsTr("lumaro · desktop")
    color: isOverOwn ? "transparent" : Theme.color.room

    DesktopScene {
        id: desktop

        scene: window.scene
        isPaused: window.isPaused
    }

    BoardView {
        id: board

        anchors.fill: parent
        rows: desktop.rows
        background: desktop.background
        isThreadTied: desktop.isThreadTied
        isFilling: true
        isRead: false
        hasPaper: !window.isOverOwn
        isPaused: window.isPaused || window.isStill
        weatherMoves: window.settings.weatherMoves && !window.isStill
        onDensityChanged: window.scene.wantPixels(density)
    }

    Connections {
        target: window.scene

        function onThreadTied(): void {
            board.drawThread();
        }
    }
}
