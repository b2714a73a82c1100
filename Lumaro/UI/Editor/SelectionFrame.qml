// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// A dashed line around the selected item, a handle above it that turns it, and one at each corner that resizes it.
Item {
    id: frame

    required property BoardView board
    required property EditorView editor

    readonly property real reach: 10

    x: board.canvas.viewX(editor.selected.centerX) - width / 2
    y: board.canvas.viewY(editor.selected.centerY) - height / 2
    width: editor.selected.width * board.pointScale + 2 * reach
    height: editor.selected.height * board.pointScale + 2 * reach
    rotation: editor.selected.tilt

    Rectangle {
        anchors.fill: parent
        radius: Theme.size.smallRadius
        color: "transparent"
        border.width: 2
        border.color: Theme.color.accent
        opacity: 0.75
        antialiasing: true
    }

    Rectangle {
        anchors {
            bottom: parent.top
            horizontalCenter: parent.horizontalCenter
        }
        width: 2
        height: 18
        color: Theme.color.accent
        opacity: 0.75
        antialiasing: true
    }

    Handle {
        x: (frame.width - width) / 2
        y: -18 - height / 2
        iconName: "rotate-cw"
        name: qsTr("turn")
        board: frame.board
        editor: frame.editor
        onStepped: frame.editor.turnBy(2)
        onPulled: place => frame.editor.turnTo(place)
    }

    Handle {
        x: 0 - width / 2
        y: 0 - height / 2
        visible: frame.editor.selected.canResize
        name: qsTr("smaller")
        onStepped: frame.editor.resizeBy(1 / 1.08)
        board: frame.board
        editor: frame.editor
        cursor: Qt.SizeFDiagCursor
        onPulled: place => frame.editor.resizeTo(place)
    }

    Handle {
        x: frame.width - width / 2
        y: 0 - height / 2
        visible: frame.editor.selected.canResize
        name: ""
        board: frame.board
        editor: frame.editor
        cursor: Qt.SizeBDiagCursor
        onPulled: place => frame.editor.resizeTo(place)
    }

    Handle {
        x: 0 - width / 2
        y: frame.height - height / 2
        visible: frame.editor.selected.canResize
        name: ""
        board: frame.board
        editor: frame.editor
        cursor: Qt.SizeBDiagCursor
        onPulled: place => frame.editor.resizeTo(place)
    }

    Handle {
        x: frame.width - width / 2
        y: frame.height - height / 2
        visible: frame.editor.selected.canResize
        name: qsTr("larger")
        onStepped: frame.editor.resizeBy(1.08)
        board: frame.board
        editor: frame.editor
        cursor: Qt.SizeFDiagCursor
        onPulled: place => frame.editor.resizeTo(place)
    }
}
