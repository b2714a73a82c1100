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
    property alias weatherMoves: board.weatherMoves

    title: qsTr("lumaro · desktop")
    color: Theme.color.room

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
        isPaused: window.isPaused
        weatherMoves: window.settings.weatherMoves
        onDensityChanged: window.scene.wantPixels(density)
    }

    Connections {
        target: window.scene

        function onThreadTied(): void {
            board.drawThread();
        }
    }
}
