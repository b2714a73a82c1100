// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// Drawing over the board: what the pointer does, and the bar with inks and widths, which stay as they were chosen. The
/// eraser does not: whoever begins to draw has a pen.
Item {
    id: layer

    required property BoardView board
    required property EditorView editor

    signal done

    function begin(): void {
        bar.begin();
        takeKeys();
    }
    function takeKeys(): void {
        hands.forceActiveFocus();
    }

    anchors.fill: parent
    visible: editor.isDoodling
    Component.onCompleted: begin()
    onVisibleChanged: {
        if (visible) {
            begin();
        } else {
            done();
        }
    }

    DoodleHands {
        id: hands

        anchors.fill: parent
        board: layer.board
        pen: layer.editor.pen
        bar: bar
    }

    DoodleBar {
        id: bar

        anchors {
            bottom: parent.bottom
            bottomMargin: Theme.size.large
            horizontalCenter: parent.horizontalCenter
        }
        pen: layer.editor.pen
        onAnswered: hands.forceActiveFocus()
    }
}
