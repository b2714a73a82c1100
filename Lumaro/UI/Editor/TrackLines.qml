// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What plays on a music card, in full, as long as it is in sight. Without height when nothing does.
Column {
    id: lines

    required property BoardScene scene
    /// Empty for none.
    required property string itemId
    property trackWords track

    function listen(): void {
        track = scene.trackOf(itemId);
    }

    width: track.isThere ? Math.max(title.width, artist.width, position.width) + 2 * Theme.size.medium : 0
    height: track.isThere ? implicitHeight : 0
    visible: track.isThere
    topPadding: Theme.size.small
    bottomPadding: Theme.size.tiny
    onItemIdChanged: listen()
    Component.onCompleted: listen()

    component Line: Body {
        readonly property real widest: 300

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, widest)
        visible: text !== ""
        maximumLineCount: 3
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        lineHeight: 1.1
        isSmall: true
    }

    Line {
        id: title

        text: lines.track.title
        isSmall: false
        font.weight: Font.DemiBold
    }
    Line {
        id: artist

        text: lines.track.artist
    }
    Line {
        id: position

        text: lines.track.position
        isSoft: true
    }

    Connections {
        target: lines.scene

        function onBoardChanged(): void {
            lines.listen();
        }
    }
    Timer {
        interval: 1e3
        repeat: true
        running: lines.visible && lines.track.isPlaying
        onTriggered: lines.listen()
    }
}
