// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// A dot to pull at; it takes the pointer in a larger square than it is drawn in.
Item {
    id: handle

    required property BoardView board
    required property EditorView editor
    required property string name
    property string iconName
    readonly property alias isPulled: pointer.pressed
    property int cursor: Qt.PointingHandCursor

    /// Where the pointer is on the canvas, while it pulls.
    signal pulled(place: point)
    /// It was pressed without a pointer.
    signal stepped

    width: 36
    height: 36
    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.ignored: name === ""
    Accessible.onPressAction: {
        stepped();
        editor.letGo();
    }

    Rectangle {
        anchors.centerIn: parent
        width: handle.iconName === "" ? 14 : 26
        height: width
        radius: width / 2
        color: Theme.color.raised
        border.width: 2
        border.color: Theme.color.accent
        antialiasing: true

        Icon {
            anchors.centerIn: parent
            visible: handle.iconName !== ""
            name: handle.iconName === "" ? "x" : handle.iconName
            side: 14
            ink: Theme.color.accent
        }
    }

    MouseArea {
        id: pointer

        function place(mouse: var): point {
            const there = mapToItem(handle.board, mouse.x, mouse.y);
            return handle.board.canvas.canvasPoint(Qt.point(there.x, there.y));
        }

        anchors.fill: parent
        cursorShape: handle.cursor
        preventStealing: true
        onPressed: mouse => handle.editor.grip(place(mouse))
        onPositionChanged: mouse => {
            if (pressed) {
                handle.pulled(place(mouse));
            }
        }
        onReleased: handle.editor.letGo()
        onCanceled: handle.editor.letGo()
    }
}
