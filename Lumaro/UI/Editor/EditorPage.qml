// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// The board to be edited: its items, the handles of the selected one, and the dock.
FocusScope {
    id: page

    required property BoardScene scene
    required property EditorView editor
    required property PictureExchange pictures
    required property MusicView music
    required property PlaceView place
    property bool isQuiet: false
    property alias weatherMoves: board.weatherMoves

    /// The person wants the page about the board, or the settings.
    signal boardPageWanted
    signal settingsWanted

    /// A note that was not finished when the program ended is in the hand again.
    readonly property bool resumesNote: editor.isNoteOffered && !isQuiet && !editor.isWriting && !editor.isDoodling
    onResumesNoteChanged: if (resumesNote) editor.beginNote()

    function takeKeys(): void {
        if (page.editor.isWriting) {
            (noteField.create() as NoteField).takeKeys();
        } else if (page.editor.isDoodling) {
            (doodleLayer.create() as DoodleLayer).takeKeys();
        } else {
            hands.forceActiveFocus();
        }
    }

    function say(text: string): void {
        toast.show(text, "");
    }

    // Keys that the bar and the dock do not take are the board's.
    Keys.onEscapePressed: takeKeys()
    Keys.onPressed: event => {
        if (event.modifiers & (Qt.ControlModifier | Qt.MetaModifier)) {
            event.accepted = hands.command(event.key, (event.modifiers & Qt.ShiftModifier) !== 0);
        }
    }

    BoardView {
        id: board

        anchors.fill: parent
        // Keeps items at the edges from under the status line and the dock.
        topMargin: 28
        bottomMargin: 88
        rows: page.scene.rows
        background: page.scene.background
        isThreadTied: page.scene.isThreadTied
        selected: page.editor.selected.itemId
        members: page.editor.members
        walkedTo: page.editor.walkedTo
        hasKeys: hands.activeFocus
        written: page.editor.isWriting ? page.editor.selected.itemId : ""
        onDensityChanged: page.scene.wantPixels(density)
    }

    Connections {
        target: page.scene

        function onThreadTied(): void {
            board.drawThread();
        }
    }

    HandText {
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 2 * Theme.size.large)
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
        isFixOffered: page.editor.selected.isOwnPlace && page.place.isOff
        onMenuWanted: place => (menu.create() as ItemMenu).popup(place.x, place.y)
        onEditWanted: page.editSelected()
        onCaptionWanted: sheets.editCaption()
        onSharingWanted: sheets.changeSharing()
        onNoteWanted: page.editor.beginNote()
        onReadWanted: sheets.readNote()
        onLinkWanted: sheets.openLinks()
        onDoodleWanted: page.editor.pen.begin(page.editor.selected.itemId)
        onBarWanted: selectionBar.takeKeys()
    }

    InkSheet {
        // A painted item keeps its pixels while it is invisible, unless it has no size.
        width: visible ? page.width : 0
        height: visible ? page.height : 0
        visible: page.editor.isDoodling
        pen: page.editor.pen
        dark: Theme.isDark
        canvas: board.canvas
    }

    SelectionFrame {
        board: board
        editor: page.editor
        visible: page.editor.selected.isThere && !page.editor.isDoodling && !page.editor.isWriting && !page.isQuiet && !hands.isLassoing
    }

    SelectionBar {
        id: selectionBar

        board: board
        editor: page.editor
        scene: page.scene
        music: page.music
        place: page.place
        visible: page.editor.selected.isThere && !page.editor.isDoodling && !page.editor.isWriting && !page.isQuiet && !hands.isDragging
        onEditWanted: page.editSelected()
        onCaptionWanted: sheets.editCaption()
        onReadWanted: sheets.readNote()
        onLinkWanted: sheets.openLinks()
        onSharingWanted: sheets.changeSharing()
        onHoursWanted: sheets.shareHours()
        onKeysLeft: page.takeKeys()
    }

    OnDemand {
        id: noteField

        anchors.fill: parent
        sourceComponent: NoteField {}
        properties: ({
                board: board,
                editor: page.editor
            })
        isWanted: page.editor.isWriting
        onClosed: page.takeKeys()
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
        onCountdownWanted: sheets.putCountdown()
        onDoodleWanted: page.editor.pen.begin("")
        onBoardPageWanted: page.boardPageWanted()
        onSettingsWanted: page.settingsWanted()
    }

    OnDemand {
        id: doodleLayer

        anchors.fill: parent
        sourceComponent: DoodleLayer {}
        properties: ({
                board: board,
                editor: page.editor
            })
        isWanted: page.editor.isDoodling
    }

    Connections {
        target: doodleLayer.instance as DoodleLayer

        function onDone(): void {
            page.takeKeys();
        }
    }

    OnDemand {
        id: menu

        sourceComponent: ItemMenu {}
        properties: ({
                hands: hands,
                music: page.music,
                place: page.place
            })
        onClosed: page.takeKeys()
    }

    EditorSheets {
        id: sheets

        editor: page.editor
        pictures: page.pictures
        music: page.music
        place: page.place
        scene: page.scene
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
        const kind = page.editor.selected.kind;
        if (kind !== "location" && !page.editor.mayEdit()) {
            return;
        }
        switch (kind) {
        case "note":
            // What is not all seen on its paper is read first.
            page.editor.isLongNote() ? sheets.readNote() : page.editor.startWriting();
            break;
        case "photo":
        case "sticker":
            page.pictures.large.open();
            break;
        case "countdown":
            sheets.editCountdown();
            break;
        case "doodle":
            page.editor.pen.begin(page.editor.selected.itemId);
            break;
        case "location":
            sheets.showPlace();
            break;
        }
    }
}
