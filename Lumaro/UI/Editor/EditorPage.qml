// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// The board under one's hands: everything that hangs, the handles of what is selected, and the dock.
FocusScope {
    id: page

    required property BoardScene scene
    required property EditorView editor
    required property PictureDesk pictures
    property bool isQuiet: false

    /// The person wants the page about the board, the settings, or a quick note.
    signal boardPageWanted
    signal settingsWanted
    signal quickNoteWanted

    function takeKeys(): void {
        if (page.editor.isWriting) {
            noteField.takeKeys();
        } else if (page.editor.isDoodling) {
            doodleHands.forceActiveFocus();
        } else {
            hands.forceActiveFocus();
        }
    }

    function say(text: string): void {
        toast.show(text, "");
    }

    // What the bar and the dock leave of the keys is the board's.
    Keys.onEscapePressed: takeKeys()
    Keys.onPressed: event => {
        if (event.modifiers & (Qt.ControlModifier | Qt.MetaModifier)) {
            event.accepted = hands.command(event.key, (event.modifiers & Qt.ShiftModifier) !== 0);
        }
    }

    BoardView {
        id: board

        anchors.fill: parent
        // What hangs at the edges is not to lie under the slip and the dock.
        topMargin: 28
        bottomMargin: 88
        rows: page.scene.rows
        background: page.scene.background
        isThreadTied: page.scene.isThreadTied
        selected: page.editor.selected.itemId
        written: page.editor.isWriting ? page.editor.selected.itemId : ""
    }

    Connections {
        target: page.scene

        function onThreadTied(): void {
            board.drawThread();
        }
    }

    HandText {
        anchors.centerIn: parent
        visible: page.scene.isEmpty && !page.isQuiet && !page.editor.isDoodling
        horizontalAlignment: Text.AlignHCenter
        color: Theme.color.softInk
        text: qsTr("nothing hangs here yet\npress n for a note, d to draw, or paste a photo")
    }

    EditorHands {
        id: hands

        anchors.fill: parent
        focus: true
        board: board
        editor: page.editor
        pictures: page.pictures
        onMenuWanted: place => menu.popup(place.x, place.y)
        onEditWanted: page.editSelected()
        onQuickNoteWanted: page.quickNoteWanted()
        onDoodleWanted: page.editor.beginDoodle(page.editor.selected.itemId)
        onBarWanted: selectionBar.takeKeys()
    }

    InkSheet {
        anchors.fill: parent
        visible: page.editor.isDoodling
        editor: page.editor
        pointScale: board.pointScale
        origin: board.origin
    }

    DoodleHands {
        id: doodleHands

        anchors.fill: parent
        visible: page.editor.isDoodling
        enabled: visible
        board: board
        editor: page.editor
        bar: doodleBar
        onDone: page.takeKeys()
    }

    SelectionFrame {
        board: board
        editor: page.editor
        visible: page.editor.selected.isThere && !page.editor.isDoodling && !page.editor.isWriting && !page.isQuiet
    }

    SelectionBar {
        id: selectionBar

        board: board
        editor: page.editor
        visible: page.editor.selected.isThere && !page.editor.isDoodling && !page.editor.isWriting && !page.isQuiet && !hands.isDragging
        onEditWanted: page.editSelected()
        onKeysLeft: page.takeKeys()
    }

    NoteField {
        id: noteField

        anchors.fill: parent
        visible: page.editor.isWriting
        board: board
        editor: page.editor
        onDone: page.takeKeys()
    }

    Dock {
        id: dock

        anchors {
            bottom: parent.bottom
            bottomMargin: Theme.size.large
            horizontalCenter: parent.horizontalCenter
        }
        visible: !page.editor.isDoodling && !page.isQuiet
        editor: page.editor
        pictures: page.pictures
        background: page.scene.background
        onCountdownWanted: countdownSheet.put()
        onDoodleWanted: page.editor.beginDoodle("")
        onBoardPageWanted: page.boardPageWanted()
        onSettingsWanted: page.settingsWanted()
    }

    DoodleBar {
        id: doodleBar

        anchors {
            bottom: parent.bottom
            bottomMargin: Theme.size.large
            horizontalCenter: parent.horizontalCenter
        }
        visible: page.editor.isDoodling
        editor: page.editor
    }

    ItemMenu {
        id: menu

        editor: page.editor
        onClosed: page.takeKeys()
        onEditWanted: page.editSelected()
        onDoodleWanted: page.editor.beginDoodle(page.editor.selected.itemId)
    }

    CountdownSheet {
        id: countdownSheet

        editor: page.editor
        onClosed: page.takeKeys()
    }

    CaptionSheet {
        id: captionSheet

        editor: page.editor
        onClosed: page.takeKeys()
    }

    CutOutPage {
        desk: page.pictures.cutOut
        onClosed: page.takeKeys()
    }

    Toast {
        id: toast

        onActed: page.editor.putBack()
    }

    Connections {
        target: page.editor

        function onNoticed(text: string): void {
            toast.show(text, page.editor.isTakenAway ? qsTr("put it back") : "");
        }
    }

    Connections {
        target: page.pictures

        function onNoticed(text: string): void {
            toast.show(text, "");
        }
    }

    /// Whatever the selected one has to edit.
    function editSelected(): void {
        switch (page.editor.selected.kind) {
        case "note":
            page.editor.startWriting();
            break;
        case "photo":
            captionSheet.edit();
            break;
        case "countdown":
            countdownSheet.edit();
            break;
        case "doodle":
            page.editor.beginDoodle(page.editor.selected.itemId);
            break;
        }
    }
}
