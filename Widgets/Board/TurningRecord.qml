// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets

/// The disc of a record and what lies still over it. It turns in steps while music plays, so that only its own square is
/// drawn, ten times a second. When a new song begins it hops, and notes rise from it.
Item {
    id: record

    readonly property BoardItemView item: parent?.parent as BoardItemView
    readonly property bool isPaused: item?.frame.isPaused ?? true
    /// Points of the canvas.
    property real lift: 0

    function greet(): void {
        if (isPaused || !visible || Theme.isMotionReduced || hop.running) {
            return;
        }
        hop.start();
        notes.active = true;
    }

    transform: Translate {
        y: -record.lift * (record.item?.pointScale ?? 0)
    }

    RecordDisc {
        id: disc

        x: discX
        y: discY
        face: record.item.face
        pointScale: record.item.pointScale
        naturalSize: Qt.size(record.item.naturalWidth, record.item.naturalHeight)
        dark: Theme.isDark
        onSongBegan: record.greet()
    }

    ItemPaper {
        part: ItemPaper.Over
        face: record.item.face
        pointScale: record.item.pointScale
        naturalSize: disc.naturalSize
        dark: Theme.isDark
        x: -bleedLeft
        y: -bleedTop
    }

    Loader {
        id: notes

        active: false
        anchors.fill: parent
        source: "RisingNotes.qml"
    }

    SequentialAnimation {
        id: hop

        NumberAnimation {
            target: record
            property: "lift"
            to: 12
            duration: Theme.motion.quick
            easing.type: Easing.OutQuad
        }
        NumberAnimation {
            target: record
            property: "lift"
            to: 0
            duration: Theme.motion.land
            easing.type: Easing.OutBack
            easing.overshoot: 2 * Theme.motion.overshoot
        }
    }

    Timer {
        interval: 100
        repeat: true
        running: disc.isTurning && !record.isPaused && record.visible
        onTriggered: disc.rotation = (disc.rotation + disc.degreesPerSecond / 10) % 360
    }
}
