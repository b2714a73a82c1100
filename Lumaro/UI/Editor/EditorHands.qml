// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Widgets
import Lumaro.UI

/// Pointer and keys on the board.
FocusScope {
    id: hands

    required property BoardView board
    required property EditorView editor
    required property PictureExchange pictures
    /// The selected item says that something is to be fixed: a click is enough.
    property bool isFixOffered: false
    readonly property alias isDragging: pointer.isDragging

    signal menuWanted(place: point)
    signal editWanted
    /// One's own music is to be shared, or no longer.
    signal sharingWanted
    signal quickNoteWanted
    signal doodleWanted
    signal helpWanted
    /// The keyboard focus is to go to the bar with what can be done to the selected item.
    signal barWanted

    activeFocusOnTab: true
    Accessible.role: Accessible.Canvas
    Accessible.name: qsTr("the board")
    Accessible.description: editor.selected.isThere ? qsTr("selected; space goes to what can be done with it") : qsTr("tab walks from one thing to the next")

    Keys.onPressed: event => event.accepted = key(event.key, event.modifiers)
    Keys.onReleased: event => {
        if (!event.isAutoRepeat) {
            editor.letGo();
        }
    }

    function key(key: int, modifiers: int): bool {
        const isShift = (modifiers & Qt.ShiftModifier) !== 0;
        if (modifiers & (Qt.ControlModifier | Qt.MetaModifier)) {
            return command(key, isShift);
        }
        const step = isShift ? 10 : 1;
        switch (key) {
        case Qt.Key_Tab:
            return editor.selectNext(true);
        case Qt.Key_Backtab:
            return editor.selectNext(false);
        case Qt.Key_Escape:
            editor.selectNothing();
            return true;
        case Qt.Key_N:
            quickNoteWanted();
            return true;
        case Qt.Key_D:
            doodleWanted();
            return true;
        }
        if (!editor.selected.isThere) {
            return false;
        }
        switch (key) {
        case Qt.Key_Left:
            editor.nudge(-step, 0);
            return true;
        case Qt.Key_Right:
            editor.nudge(step, 0);
            return true;
        case Qt.Key_Up:
            editor.nudge(0, -step);
            return true;
        case Qt.Key_Down:
            editor.nudge(0, step);
            return true;
        case Qt.Key_Plus:
        case Qt.Key_Equal:
            editor.resizeBy(1.08);
            return true;
        case Qt.Key_Minus:
            editor.resizeBy(1 / 1.08);
            return true;
        case Qt.Key_R:
            editor.turnBy(isShift ? -2 : 2);
            return true;
        case Qt.Key_Return:
        case Qt.Key_Enter:
            editWanted();
            return true;
        case Qt.Key_Delete:
        case Qt.Key_Backspace:
            editor.takeDown();
            return true;
        case Qt.Key_Space:
            barWanted();
            return true;
        case Qt.Key_K:
            editor.setKept(!editor.selected.isKept);
            return true;
        case Qt.Key_F:
            editor.bringToFront();
            return true;
        case Qt.Key_Menu:
            menuWanted(Qt.point(width / 2, height / 2));
            return true;
        }
        return false;
    }

    function command(key: int, isShift: bool): bool {
        switch (key) {
        case Qt.Key_Z:
            isShift ? editor.redo() : editor.undo();
            return true;
        case Qt.Key_Y:
            editor.redo();
            return true;
        case Qt.Key_C:
            pictures.copy();
            return true;
        case Qt.Key_V:
            return pictures.paste();
        case Qt.Key_D:
            editor.duplicate();
            return true;
        }
        return false;
    }

    MouseArea {
        id: pointer

        property bool isDragging: false
        property point start

        /// A pointer that moves no further than this, in view pixels, is a click and no drag.
        readonly property real tremble: 4

        function place(mouse: var): point {
            return hands.board.canvas.canvasPoint(Qt.point(mouse.x, mouse.y));
        }

        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        cursorShape: isDragging ? Qt.ClosedHandCursor : Qt.ArrowCursor
        onPressed: mouse => {
            hands.forceActiveFocus();
            hands.editor.finishWriting();
            start = Qt.point(mouse.x, mouse.y);
            hands.editor.select(hands.editor.itemAt(place(mouse), 8));
            if (mouse.button === Qt.RightButton && hands.editor.selected.isThere) {
                hands.menuWanted(start);
            }
        }
        onPositionChanged: mouse => {
            if (!(mouse.buttons & Qt.LeftButton) || !hands.editor.selected.isThere) {
                return;
            }
            if (!isDragging && Math.abs(mouse.x - start.x) + Math.abs(mouse.y - start.y) > tremble) {
                isDragging = true;
                hands.editor.grip(hands.board.canvas.canvasPoint(start));
            }
            if (isDragging) {
                hands.editor.moveTo(place(mouse));
            }
        }
        onReleased: mouse => {
            if (hands.isFixOffered && !isDragging && mouse.button === Qt.LeftButton)
                clicked.restart();
            isDragging = false;
            hands.editor.letGo();
        }
        onCanceled: {
            isDragging = false;
            hands.editor.letGo();
        }
        onDoubleClicked: {
            clicked.stop();
            if (hands.editor.selected.isThere) {
                hands.editWanted();
            }
        }
        onWheel: wheel => {
            if (hands.editor.selected.isThere && hands.editor.selected.canResize) {
                hands.editor.resizeBy(Math.pow(1.04, wheel.angleDelta.y / 120));
                rested.restart();
            }
        }

        // The second press of a double click is not to fall on what the first one opened.
        Timer {
            id: clicked

            interval: Application.styleHints.mouseDoubleClickInterval
            onTriggered: if (hands.isFixOffered) hands.editWanted()
        }

        // A wheel does not say when it stops: it has after a while without a turn.
        Timer {
            id: rested

            interval: 350
            onTriggered: hands.editor.letGo()
        }
    }
}
