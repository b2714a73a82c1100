// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets

/// The warm light around an item that has just come; it fades by itself.
Item {
    id: glow

    readonly property BoardItemView item: parent?.parent as BoardItemView

    ItemGlow {
        face: glow.item.face
        pointScale: glow.item.pointScale
        naturalSize: Qt.size(glow.item.naturalWidth, glow.item.naturalHeight)
        x: -reach
        y: -reach
    }

    SequentialAnimation {
        running: true
        onFinished: (glow.parent as Loader).active = false

        PauseAnimation {
            duration: Theme.motion.glow / 2
        }
        NumberAnimation {
            target: glow
            property: "opacity"
            from: 1
            to: 0
            duration: Theme.motion.glow / 2
            easing.type: Easing.InOutSine
        }
    }
}
