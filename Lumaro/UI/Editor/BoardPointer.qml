// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Widgets
import Lumaro.UI

/// What the pointer means on the board: a click selects, with Shift one more; a drag carries what it takes hold of, or
/// draws a lasso when it begins on the glass or on what is locked; the wheel resizes.
MouseArea {
    id: pointer

    enum Drag { None, Carrying, Lasso }

    required property BoardView board
    required property EditorView editor
    /// The selected item says that something is to be fixed: a click is enough.
    property bool isFixOffered: false
    property int drag: BoardPointer.None
    property point start
    property string pressedItem
    property bool isGroupPressed: false
    property bool isAdding: false

    readonly property bool isDragging: drag !== BoardPointer.None
    /// A pointer that moves no further than this, in view pixels, is a click and no drag.
    readonly property real tremble: 4

    signal taken
    signal menuWanted(place: point)
    signal editWanted

    function place(at: point): point {
        return board.canvas.canvasPoint(at);
    }

    function press(at: point, button: int, isShift: bool): void {
        start = at;
        isAdding = isShift;
        pressedItem = editor.itemAt(place(at), 8);
        isGroupPressed = pressedItem !== "" && editor.isSelected(pressedItem);
        if (isShift) {
            editor.toggle(pressedItem);
        } else if (!isGroupPressed) {
            editor.select(pressedItem);
        }
        if (button === Qt.RightButton && editor.selected.isThere) {
            menuWanted(at);
        }
    }

    function beginDrag(): void {
        if (editor.isSelected(pressedItem) && !editor.selected.isLocked) {
            drag = BoardPointer.Carrying;
            editor.grip(place(start));
        } else {
            drag = BoardPointer.Lasso;
            editor.beginLasso(isAdding);
        }
    }

    function endDrag(): void {
        drag = BoardPointer.None;
        editor.letGo();
    }

    acceptedButtons: Qt.LeftButton | Qt.RightButton
    cursorShape: drag === BoardPointer.Carrying ? Qt.ClosedHandCursor : Qt.ArrowCursor
    onPressed: mouse => {
        taken();
        editor.finishWriting();
        press(Qt.point(mouse.x, mouse.y), mouse.button, (mouse.modifiers & Qt.ShiftModifier) !== 0);
    }
    onPositionChanged: mouse => {
        if (!(mouse.buttons & Qt.LeftButton)) {
            return;
        }
        const at = Qt.point(mouse.x, mouse.y);
        if (!isDragging && Math.abs(at.x - start.x) + Math.abs(at.y - start.y) > tremble) {
            beginDrag();
        }
        if (drag === BoardPointer.Carrying) {
            editor.moveTo(place(at));
        } else if (drag === BoardPointer.Lasso) {
            editor.lasso(place(start), place(at));
        }
    }
    onReleased: mouse => {
        const isClick = !isDragging && mouse.button === Qt.LeftButton;
        if (isClick && isFixOffered) {
            clicked.restart();
        }
        // A click into a group takes one out of it by itself.
        if (isClick && isGroupPressed && !isAdding) {
            editor.select(pressedItem);
        }
        endDrag();
    }
    onCanceled: endDrag()
    onDoubleClicked: {
        clicked.stop();
        if (editor.selected.isThere) {
            editWanted();
        }
    }
    onWheel: wheel => {
        if (editor.selected.isThere && editor.selected.canResize) {
            editor.resizeBy(Math.pow(1.04, wheel.angleDelta.y / 120));
            rested.restart();
        }
    }

    LassoLine {
        visible: pointer.drag === BoardPointer.Lasso
        x: Math.min(pointer.start.x, pointer.mouseX)
        y: Math.min(pointer.start.y, pointer.mouseY)
        width: visible ? Math.abs(pointer.mouseX - pointer.start.x) : 0
        height: visible ? Math.abs(pointer.mouseY - pointer.start.y) : 0
    }

    // The second press of a double click is not to fall on what the first one opened.
    Timer {
        id: clicked

        interval: Application.styleHints.mouseDoubleClickInterval
        onTriggered: if (pointer.isFixOffered) pointer.editWanted()
    }

    // A wheel does not say when it stops: it has after a while without a turn.
    Timer {
        id: rested

        interval: 350
        onTriggered: pointer.editor.letGo()
    }
}
