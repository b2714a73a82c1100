// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Whose the selected item is and since when; below it what is missing on a card of the partner's, and what they can do.
Column {
    id: lines

    required property BoardScene scene
    required property string itemId
    property string whose
    property string missing

    function listen(): void {
        whose = scene.whoseOf(itemId);
        missing = scene.missingOf(itemId);
    }

    width: Math.max(line.width, help.visible ? help.width : 0) + 2 * Theme.size.medium
    visible: whose !== ""
    height: visible ? implicitHeight : 0
    topPadding: Theme.size.small
    bottomPadding: Theme.size.tiny
    spacing: 2
    onItemIdChanged: listen()
    Component.onCompleted: listen()

    Body {
        id: line

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, 300)
        text: lines.whose
        maximumLineCount: 1
        elide: Text.ElideRight
        isSmall: true
        isSoft: true
    }
    Body {
        id: help

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, 300)
        visible: text !== ""
        text: lines.missing
        horizontalAlignment: Text.AlignHCenter
        isSmall: true
    }

    Connections {
        target: lines.scene

        function onBoardChanged(): void {
            lines.listen();
        }
    }
}
