// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Widgets

/// Rain and snow that fall before a window, twelve steps a second; and in a storm now and then a flash, far away. Where
/// nothing falls, and while nobody sees it, nothing is drawn.
Item {
    id: weather

    readonly property BoardItemView item: parent?.parent as BoardItemView
    readonly property bool isSeen: visible && item !== null && !item.frame.isPaused && Window.visibility !== Window.Hidden && Window.visibility !== Window.Minimized

    FallingWeather {
        id: falling

        anchors.fill: parent
        face: weather.item.face
        pointScale: weather.item.pointScale
        naturalSize: Qt.size(weather.item.naturalWidth, weather.item.naturalHeight)
    }

    Timer {
        interval: 83
        repeat: true
        running: falling.isFalling && weather.isSeen
        onTriggered: falling.advance(interval * 0.001)
    }

    Timer {
        function waitAgain(): void {
            interval = 20000 + 40000 * Math.random();
        }

        interval: 30000
        repeat: true
        running: falling.isStormy && weather.isSeen
        onRunningChanged: waitAgain()
        onTriggered: {
            lightning.start();
            waitAgain();
        }
    }

    // One soft flash, within 0.3 seconds.
    SequentialAnimation {
        id: lightning

        NumberAnimation {
            target: falling
            property: "flash"
            to: 1
            duration: 70
            easing.type: Easing.OutQuad
        }
        NumberAnimation {
            target: falling
            property: "flash"
            to: 0
            duration: 210
            easing.type: Easing.InOutSine
        }
    }
}
