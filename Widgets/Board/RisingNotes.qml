// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Three notes that rise from a record and fade within a second.
Item {
    id: notes

    property real progress: 0

    /// How far a note is on its way, 0 to 1: one begins after the other.
    function way(order: int): real {
        return Math.max(0, Math.min(1, progress * 1.4 - order * 0.2));
    }

    component RisingNote: Icon {
        required property Item record
        required property real from
        required property real part
        required property real way

        ink: Theme.color.accent
        side: Math.round(record.width * part)
        x: record.width * (from + 0.05 * Math.sin(way * 5)) - side / 2
        y: record.height * (0.12 - 0.42 * way)
        rotation: 14 * Math.sin(way * 4)
        opacity: Math.min(1, way * 6) * Math.min(1, (1 - way) * 2.2)
    }

    RisingNote {
        record: notes
        name: "music-2"
        from: 0.36
        part: 0.15
        way: notes.way(0)
    }
    RisingNote {
        record: notes
        name: "music"
        from: 0.60
        part: 0.19
        way: notes.way(1)
    }
    RisingNote {
        record: notes
        name: "music-2"
        from: 0.20
        part: 0.12
        way: notes.way(2)
    }

    NumberAnimation {
        target: notes
        property: "progress"
        running: true
        to: 1
        duration: Theme.motion.glow / 2
        easing.type: Easing.OutSine
        onFinished: (notes.parent as Loader).active = false
    }
}
