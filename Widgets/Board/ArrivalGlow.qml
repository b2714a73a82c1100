// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// The warm light around an item that has just come; it fades by itself.
Item {
    id: glow

    BorderImage {
        anchors.fill: parent
        source: "image://shadow/20/22?f2a94b"
        border {
            left: 86
            top: 86
            right: 86
            bottom: 86
        }
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
        }
    }
}
