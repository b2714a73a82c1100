// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// Writing on the note itself, in its hand and upright, with a small bar above for how letters look.
FocusScope {
    id: field

    required property BoardView board
    required property EditorView editor
    readonly property selectedItem note: editor.selected
    readonly property real pointScale: board.pointScale * note.itemScale

    signal closed

    function takeKeys(): void {
        text.forceActiveFocus();
    }

    Keys.onEscapePressed: editor.finishWriting()
    anchors.fill: parent
    visible: editor.isWriting
    onVisibleChanged: if (!visible) closed()
    Component.onCompleted: {
        composer.begin();
        text.cursorPosition = text.length;
        takeKeys();
    }

    // The paper chosen while writing.
    readonly property string paperName: note.paper
    onPaperNameChanged: composer.takePaper()

    NoteComposer {
        id: composer

        editor: field.editor
        dark: Theme.isDark
        document: text.textDocument
        selectionStart: text.selectionStart
        selectionEnd: text.selectionEnd
    }

    Item {
        id: paper

        x: field.board.canvas.viewX(field.note.centerX) - width / 2
        y: field.board.canvas.viewY(field.note.centerY) - height / 2
        width: composer.paper.width
        height: composer.paper.height
        scale: field.pointScale

        TextEdit {
            id: text

            x: composer.box.x
            y: composer.box.y
            width: composer.box.width
            height: composer.box.height
            font: composer.font
            color: composer.ink
            selectionColor: Theme.color.accent
            selectedTextColor: Theme.color.onAccent
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.RichText
            verticalAlignment: TextEdit.AlignVCenter
            selectByMouse: true
            persistentSelection: true
            clip: true
            focus: true
            activeFocusOnTab: true
            // Until the paper below is upright.
            NumberAnimation on opacity {
                from: field.note.tilt === 0 ? 1 : 0
                to: 1
                duration: Theme.motion.quick
            }
            Accessible.role: Accessible.EditableText
            Accessible.name: qsTr("the note's text")
            // Tab goes to the bar above.
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onPressed: event => {
                if (event.modifiers & (Qt.ControlModifier | Qt.MetaModifier)) {
                    event.accepted = field.shortcut(event.key, (event.modifiers & Qt.ShiftModifier) !== 0);
                }
            }
        }
    }

    function shortcut(key: int, isShift: bool): bool {
        switch (key) {
        case Qt.Key_B:
            composer.toggle("bold");
            return true;
        case Qt.Key_I:
            composer.toggle("italic");
            return true;
        case Qt.Key_U:
            composer.toggle("underline");
            return true;
        case Qt.Key_X:
            if (isShift) {
                composer.toggle("strike");
            }
            return isShift;
        case Qt.Key_Z:
            // Nothing behind the note is taken back from within it.
            isShift ? text.redo() : text.undo();
            return true;
        case Qt.Key_Y:
            text.redo();
            return true;
        case Qt.Key_Return:
            field.editor.finishWriting();
            return true;
        }
        return false;
    }

    NoteBar {
        composer: composer
        editor: field.editor
        room: field.width - 2 * Theme.size.small
        onKeysLeft: field.takeKeys()
        x: Math.round(Math.max(Theme.size.small, Math.min(field.width - width - Theme.size.small, paper.x + (paper.width - width) / 2)))
        y: {
            const middle = paper.y + paper.height / 2;
            const half = paper.height / 2 * field.pointScale;
            const above = middle - half - height - Theme.size.huge;
            return Math.round(above > Theme.size.small ? above : middle + half + Theme.size.large);
        }
        onDone: field.editor.finishWriting()
    }
}
