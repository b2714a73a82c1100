// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Widgets

/// The disc of a record and what lies still over it. It turns in steps while music plays, so that only its own square is
/// drawn, ten times a second.
Item {
    id: record

    readonly property BoardItemView item: parent?.parent as BoardItemView
    readonly property bool isPaused: item?.frame.isPaused ?? true

    RecordDisc {
        id: disc

        x: discX
        y: discY
        face: record.item.face
        pointScale: record.item.pointScale
        naturalSize: Qt.size(record.item.naturalWidth, record.item.naturalHeight)
    }

    ItemPaper {
        part: ItemPaper.Over
        face: record.item.face
        pointScale: record.item.pointScale
        naturalSize: disc.naturalSize
        x: -bleedLeft
        y: -bleedTop
    }

    Timer {
        interval: 100
        repeat: true
        running: disc.isTurning && !record.isPaused && record.visible
        onTriggered: disc.rotation = (disc.rotation + disc.degreesPerSecond / 10) % 360
    }
}
