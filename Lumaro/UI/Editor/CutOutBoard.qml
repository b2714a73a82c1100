// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The picture under the scissors, for a pointer that paints and for keys: arrows walk a brush over it, Space keeps what
/// is under it, X leaves it out.
CutOutSheet {
    id: board

    required property string tool
    /// How broad a stroke is, of the picture's width.
    property real brush: 0.03
    /// Where the keys' brush is, of the picture.
    property point cursor: Qt.point(0.5, 0.5)

    signal framed
    signal accepted

    function resizeBrush(factor: real): void {
        brush = Math.max(0.008, Math.min(0.15, brush * factor));
    }
    function walk(x: real, y: real): void {
        cursor = Qt.point(Math.max(0, Math.min(1, cursor.x + x)), Math.max(0, Math.min(1, cursor.y + y)));
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.Graphic
    Accessible.focusable: true
    Accessible.name: qsTr("the picture to cut out of")
    Accessible.description: qsTr("arrows move a brush, space keeps what is under it, x leaves it out, plus and minus change its size")
    Keys.onPressed: event => {
        const step = (event.modifiers & Qt.ShiftModifier) ? 0.005 : 0.025;
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Left:
            return board.walk(-step, 0);
        case Qt.Key_Right:
            return board.walk(step, 0);
        case Qt.Key_Up:
            return board.walk(0, -step * board.session.aspect);
        case Qt.Key_Down:
            return board.walk(0, step * board.session.aspect);
        case Qt.Key_Space:
        case Qt.Key_X:
            return board.session.scribble([board.cursor.x, board.cursor.y], board.brush, event.key === Qt.Key_Space);
        case Qt.Key_Plus:
        case Qt.Key_Equal:
            return board.resizeBrush(1.3);
        case Qt.Key_Minus:
            return board.resizeBrush(1 / 1.3);
        case Qt.Key_Return:
        case Qt.Key_Enter:
            return board.accepted();
        }
        event.accepted = event.key === Qt.Key_Z && (event.modifiers & (Qt.ControlModifier | Qt.MetaModifier));
        if (event.accepted)
            board.session.undo();
    }

    MouseArea {
        property point start
        property list<real> places

        anchors.fill: parent
        cursorShape: Qt.CrossCursor
        preventStealing: true
        onPressed: mouse => {
            board.forceActiveFocus(Qt.MouseFocusReason);
            start = Qt.point(mouse.x / width, mouse.y / height);
            places = [start.x, start.y];
            rubber.visible = board.tool === "frame";
            trail.visible = board.tool !== "frame";
            trail.at = Qt.point(mouse.x, mouse.y);
            rubber.width = 0;
        }
        onPositionChanged: mouse => {
            rubber.x = Math.min(start.x * width, mouse.x);
            rubber.y = Math.min(start.y * height, mouse.y);
            rubber.width = Math.abs(mouse.x - start.x * width);
            rubber.height = Math.abs(mouse.y - start.y * height);
            trail.at = Qt.point(mouse.x, mouse.y);
            // A hand that never lets go draws no longer line than this.
            if (places.length < 4000)
                places.push(mouse.x / width, mouse.y / height);
        }
        onReleased: mouse => {
            rubber.visible = false;
            trail.visible = false;
            if (board.tool !== "frame") {
                board.session.scribble(places, board.brush, board.tool === "keep");
            } else if (rubber.width > 8 && rubber.height > 8) {
                board.session.frame(start.x, start.y, mouse.x / width, mouse.y / height);
                board.framed();
            }
        }
    }

    Rectangle {
        id: rubber

        visible: false
        color: "transparent"
        border.width: 2
        border.color: Theme.color.accent
        radius: 3
    }
    Rectangle {
        id: trail

        property point at

        visible: false
        x: at.x - width / 2
        y: at.y - height / 2
        width: board.width * board.brush
        height: width
        radius: width / 2
        color: board.tool === "keep" ? Theme.color.here : Theme.color.accent
        opacity: 0.7
    }
    Rectangle { // the keys' brush
        visible: board.activeFocus && !trail.visible && !rubber.visible
        x: board.cursor.x * board.width - width / 2
        y: board.cursor.y * board.height - height / 2
        width: Math.max(6, board.width * board.brush)
        height: width
        radius: width / 2
        color: "transparent"
        border.width: 2
        border.color: "#FFF8EA"

        Rectangle {
            anchors.fill: parent
            anchors.margins: -1
            radius: width / 2
            color: "transparent"
            border.width: 1
            border.color: "#3B2E22"
        }
    }
}
