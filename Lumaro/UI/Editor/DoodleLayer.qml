// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// Drawing over the board: what the pointer does, and the bar with inks and widths, which stay as they were chosen.
Item {
    id: layer

    required property BoardView board
    required property EditorView editor

    signal done

    function takeKeys(): void {
        hands.forceActiveFocus();
    }

    anchors.fill: parent
    visible: editor.isDoodling
    Component.onCompleted: takeKeys()
    onVisibleChanged: {
        if (visible) {
            takeKeys();
        } else {
            done();
        }
    }

    DoodleHands {
        id: hands

        anchors.fill: parent
        board: layer.board
        editor: layer.editor
        bar: bar
    }

    DoodleBar {
        id: bar

        anchors {
            bottom: parent.bottom
            bottomMargin: Theme.size.large
            horizontalCenter: parent.horizontalCenter
        }
        editor: layer.editor
    }
}
