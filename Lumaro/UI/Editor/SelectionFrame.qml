// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// A line around what is selected, a handle above it that turns it, and one at each corner that resizes it; around what
/// is locked a small lock instead.
Item {
    id: frame

    required property BoardView board
    required property EditorView editor

    readonly property real reach: 10
    /// As it lies before it is turned.
    readonly property rect flat: Qt.rect(x, y, width, height)
    /// Somebody turns or resizes the item at a handle.
    readonly property bool isPulled: turn.isPulled || topLeft.isPulled || topRight.isPulled || bottomLeft.isPulled || bottomRight.isPulled
    readonly property bool canResize: editor.selected.canResize && !editor.selected.isLocked

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

    Icon {
        anchors {
            horizontalCenter: parent.right
            verticalCenter: parent.top
        }
        visible: frame.editor.selected.isLocked
        name: "lock"
        side: 16
        ink: Theme.color.accent

        Rectangle {
            anchors.centerIn: parent
            z: -1
            width: 30
            height: 30
            radius: 15
            color: Theme.color.raised
            border.width: 2
            border.color: Theme.color.accent
            antialiasing: true
        }
    }

    Rectangle {
        visible: !frame.editor.selected.isLocked
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
        id: turn

        x: (frame.width - width) / 2
        y: -18 - height / 2
        visible: !frame.editor.selected.isLocked
        iconName: "rotate-cw"
        name: qsTr("turn")
        board: frame.board
        editor: frame.editor
        onStepped: frame.editor.turnBy(2)
        onPulled: place => frame.editor.turnTo(place)
    }

    Handle {
        id: topLeft

        x: 0 - width / 2
        y: 0 - height / 2
        visible: frame.canResize
        name: qsTr("smaller")
        onStepped: frame.editor.resizeBy(1 / 1.08)
        board: frame.board
        editor: frame.editor
        cursor: Qt.SizeFDiagCursor
        onPulled: place => frame.editor.resizeTo(place)
    }

    Handle {
        id: topRight

        x: frame.width - width / 2
        y: 0 - height / 2
        visible: frame.canResize
        name: ""
        board: frame.board
        editor: frame.editor
        cursor: Qt.SizeBDiagCursor
        onPulled: place => frame.editor.resizeTo(place)
    }

    Handle {
        id: bottomLeft

        x: 0 - width / 2
        y: frame.height - height / 2
        visible: frame.canResize
        name: ""
        board: frame.board
        editor: frame.editor
        cursor: Qt.SizeBDiagCursor
        onPulled: place => frame.editor.resizeTo(place)
    }

    Handle {
        id: bottomRight

        x: frame.width - width / 2
        y: frame.height - height / 2
        visible: frame.canResize
        name: qsTr("larger")
        onStepped: frame.editor.resizeBy(1.08)
        board: frame.board
        editor: frame.editor
        cursor: Qt.SizeFDiagCursor
        onPulled: place => frame.editor.resizeTo(place)
    }
}
