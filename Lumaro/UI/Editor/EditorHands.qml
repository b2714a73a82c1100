// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
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
    /// Where what is selected lies, for what is opened by a key.
    property rect frame
    readonly property alias isDragging: pointer.isDragging
    readonly property bool isLassoing: pointer.drag === BoardPointer.Lasso

    signal menuWanted(place: point)
    signal editWanted
    /// What is written under the selected photo is to be changed.
    signal captionWanted
    /// One's own music is to be shared, or no longer.
    signal sharingWanted
    /// The same of one's hours.
    signal hoursWanted
    signal noteWanted
    /// The selected note is to be read large; a link in it is to be opened.
    signal readWanted
    signal linkWanted
    signal doodleWanted
    signal helpWanted
    /// The keyboard focus is to go to the bar with what can be done to the selected item.
    signal barWanted

    activeFocusOnTab: true
    Accessible.role: Accessible.Canvas
    Accessible.name: qsTr("the board")
    Accessible.description: editor.selected.count > 1 ? qsTr("%n things selected; space goes to what can be done with them", "", editor.selected.count) : qsTr("tab walks from one thing to the next")
    Accessible.focused: isAttended
    // A screen reader is with one item, or here.
    readonly property bool isAttended: activeFocus && editor.walkedTo === "" && editor.selected.count !== 1
    onIsAttendedChanged: {
        if (isAttended)
            ScreenReader.moveTo(hands);
    }

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
            noteWanted();
            return true;
        case Qt.Key_D:
            doodleWanted();
            return true;
        case Qt.Key_Space:
            if (isShift) {
                editor.toggleWalkedTo();
                return true;
            }
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
        case Qt.Key_C:
            if (editor.selected.canCaption)
                captionWanted();
            return editor.selected.canCaption;
        case Qt.Key_V:
            if (editor.selected.kind === "note")
                readWanted();
            return true;
        case Qt.Key_O:
            if (editor.selected.hasLinks)
                linkWanted();
            return true;
        case Qt.Key_K:
            toggle("isKept", kept => editor.setKept(kept), qsTr("kept up"), qsTr("comes down after a day"));
            return true;
        case Qt.Key_F:
            editor.bringToFront();
            return true;
        case Qt.Key_B:
            editor.putToBack();
            return true;
        case Qt.Key_L:
            toggle("isLocked", locked => editor.setLocked(locked), qsTr("locked"), qsTr("unlocked"));
            return true;
        case Qt.Key_H:
            editor.giveHeart();
            return true;
        case Qt.Key_Menu:
            menuWanted(Qt.point(frame.x + frame.width / 2, frame.y + frame.height / 2));
            return true;
        }
        return false;
    }

    // The item's name says how it is now, but not by itself while a screen reader is with it.
    function toggle(name: string, set: var, whenSet: string, whenNot: string): void {
        const was = editor.selected[name];
        set(!was);
        if (editor.selected[name] !== was)
            spoken.say(was ? whenNot : whenSet);
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
        case Qt.Key_A:
            editor.selectAll();
            return true;
        case Qt.Key_Space:
            editor.toggleWalkedTo();
            return true;
        }
        return false;
    }

    SpokenLine {
        id: spoken
    }

    BoardPointer {
        id: pointer

        anchors.fill: parent
        board: hands.board
        editor: hands.editor
        isFixOffered: hands.isFixOffered
        onTaken: hands.forceActiveFocus()
        onMenuWanted: place => hands.menuWanted(place)
        onEditWanted: hands.editWanted()
    }
}
