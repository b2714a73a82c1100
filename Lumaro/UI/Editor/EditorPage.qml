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
    readonly property alias sheets: sheets
    readonly property alias toast: toast

    /// The person wants the page about the board, or the settings.
    signal boardPageWanted
    signal settingsWanted
    /// What the selected item takes of the page with its frame and handles; empty when none is to be seen.
    readonly property rect reach: selection.visible ? FrameRoom.reach(selection.flat, selection.rotation) : Qt.rect(0, 0, 0, 0)
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

    /// The keys go where they were before something lay over the page, if that is still to be seen.
    function giveKeysBack(): void {
        if (!isSeen(Window.activeFocusItem))
            takeKeys();
    }
    function isSeen(item: Item): bool {
        return item !== null && item.visible && item.activeFocusOnTab;
    }

    // Keys that the bar and the dock do not take are the board's.
    Keys.onEscapePressed: takeKeys()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F1 || event.key === Qt.Key_Question) {
            sheets.help();
            event.accepted = true;
        } else if (event.modifiers & (Qt.ControlModifier | Qt.MetaModifier)) {
            event.accepted = hands.command(event.key, (event.modifiers & Qt.ShiftModifier) !== 0);
        }
    }

    BoardView {
        id: board

        anchors.fill: parent
        // Keeps items at the edges from under the status line and the dock, and in sight where they hang over an edge.
        topMargin: 28
        bottomMargin: dock.height + dock.anchors.bottomMargin + Theme.size.medium
        sideMargin: Math.round(0.06 * Math.min(page.width, page.height))
        rows: page.scene.rows
        background: page.scene.background
        isThreadTied: page.scene.isThreadTied
        selected: page.editor.selected.itemId
        members: [...page.editor.members]
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

    EmptyWords {
        anchors.centerIn: parent
        visible: page.scene.isEmpty && !page.isQuiet && !page.editor.isDoodling
    }

    EditorHands {
        id: hands

        anchors.fill: parent
        focus: true
        board: board
        editor: page.editor
        pictures: page.pictures
        isFixOffered: page.editor.selected.isOwnPlace && page.place.isOff
        frame: selection.flat
        onMenuWanted: place => (menu.create() as ItemMenu).popup(place.x, place.y)
        onEditWanted: sheets.editSelected()
        onCaptionWanted: sheets.editCaption()
        onSharingWanted: sheets.changeSharing()
        onHoursWanted: sheets.shareHours()
        onNoteWanted: page.editor.beginNote()
        onReadWanted: sheets.readNote()
        onLinkWanted: sheets.openLinks()
        onDoodleWanted: page.editor.pen.begin(page.editor.selected.itemId)
        onBarWanted: selectionBar.takeKeys()
        onHelpWanted: sheets.help()
    }

    DropPlace {
        anchors.fill: parent
        board: board
        editor: page.editor
        pictures: page.pictures
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
        id: selection

        board: board
        editor: page.editor
        visible: page.editor.selected.isThere && !page.editor.isDoodling && !page.editor.isWriting && !page.isQuiet && !hands.isLassoing
    }

    SelectionBar {
        id: selectionBar

        frame: selection.flat
        // Not over the status line.
        room: Qt.rect(Theme.size.small, 52, page.width - 2 * Theme.size.small, (dock.isInTheWay ? page.height : dock.y) - 52 - Theme.size.small)
        editor: page.editor
        scene: page.scene
        music: page.music
        place: page.place
        visible: page.editor.selected.isThere && !page.editor.isDoodling && !page.editor.isWriting && !page.isQuiet && !hands.isDragging
        onEditWanted: sheets.editSelected()
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
        room: Qt.size(page.width, page.height)
        isCarrying: hands.isDragging || selection.isPulled
        isInTheWay: FrameRoom.areNear(page.reach, Qt.rect(x, y, width, height), isCarrying ? Theme.size.large : 0)
        onCountdownWanted: sheets.putCountdown()
        onDoodleWanted: page.editor.pen.begin("")
        onBoardPageWanted: page.boardPageWanted()
        onSettingsWanted: page.settingsWanted()
        onHelpWanted: sheets.help()
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
        onClosed: page.giveKeysBack()
    }

    EditorToast {
        id: toast

        page: page
        roomBelow: page.isQuiet ? 0 : page.height - dock.y - Theme.size.medium
        editor: page.editor
        pictures: page.pictures
    }
}
