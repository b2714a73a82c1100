// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// Drawing on the glass: the hands that draw, and the pencil case, which stays as it was left.
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
