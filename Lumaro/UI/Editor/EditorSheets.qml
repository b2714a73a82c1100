// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Lumaro.UI

/// The sheets that come up over the board to put up, edit, cut out or share something.
Item {
    id: sheets

    required property EditorView editor
    required property PictureExchange pictures
    required property MusicView music
    required property PlaceView place
    required property BoardScene scene

    signal closed

    function putCountdown(): void {
        (countdown.create() as CountdownSheet).put();
    }
    function editCountdown(): void {
        (countdown.create() as CountdownSheet).edit();
    }
    function editCaption(): void {
        (caption.create() as CaptionSheet).edit();
    }
    function help(): void {
        (keys.create() as HelpSheet).open();
    }
    /// The selected note, large.
    function readNote(): void {
        (reader.create() as NoteReader).read();
    }
    /// Asks whether the links of the selected note are to be opened.
    function openLinks(): void {
        (linkQuestion.create() as LinkQuestion).ask(editor.links());
    }
    function showPlace(): void {
        (whereabouts.create() as PlaceSheet).show(editor.selected.itemId, editor.selected.isOwnPlace);
    }
    /// Before the first yes people read what is shared.
    function changeSharing(): void {
        if (music.isDecided) {
            music.share(!music.isShared);
        } else {
            (sharing.create() as MusicSheet).ask();
        }
    }

    /// The same of one's hours, which a card asks for.
    function shareHours(): void {
        if (place.isHoursDecided)
            place.shareHours(true);
        else
            (hours.create() as HoursSheet).ask();
    }

    /// Whatever the selected one has to edit.
    function editSelected(): void {
        const kind = sheets.editor.selected.kind;
        if (kind !== "location" && !sheets.editor.mayEdit()) {
            return;
        }
        switch (kind) {
        case "note":
            // What is not all seen on its paper is read first.
            sheets.editor.isLongNote() ? readNote() : sheets.editor.startWriting();
            break;
        case "photo":
        case "sticker":
            sheets.pictures.large.open();
            break;
        case "countdown":
            editCountdown();
            break;
        case "doodle":
            sheets.editor.pen.begin(sheets.editor.selected.itemId);
            break;
        case "location":
            showPlace();
            break;
        }
    }

    OnDemand {
        id: countdown

        sourceComponent: CountdownSheet {}
        properties: ({
                editor: sheets.editor
            })
        onClosed: sheets.closed()
    }
    OnDemand {
        id: caption

        sourceComponent: CaptionSheet {}
        properties: ({
                editor: sheets.editor
            })
        // Over a large picture the keys go back to that.
        onClosed: if (!large.instance) sheets.closed()
    }
    OnDemand {
        id: reader

        sourceComponent: NoteReader {}
        properties: ({
                editor: sheets.editor
            })
        onClosed: sheets.closed()
    }
    Connections {
        target: reader.instance as NoteReader

        function onLinkWanted(link: string): void {
            (linkQuestion.create() as LinkQuestion).ask([link]);
        }
    }
    OnDemand {
        id: linkQuestion

        sourceComponent: LinkQuestion {}
        properties: ({
                editor: sheets.editor
            })
        onClosed: sheets.closed()
    }
    OnDemand {
        id: sharing

        sourceComponent: MusicSheet {}
        properties: ({
                music: sheets.music
            })
        onClosed: sheets.closed()
    }
    OnDemand {
        id: hours

        sourceComponent: HoursSheet {}
        properties: ({
                place: sheets.place
            })
        onClosed: sheets.closed()
    }
    OnDemand {
        id: whereabouts

        sourceComponent: PlaceSheet {}
        properties: ({
                place: sheets.place,
                scene: sheets.scene
            })
        onClosed: sheets.closed()
    }
    OnDemand {
        id: large

        sourceComponent: LargePage {}
        properties: ({
                pictures: sheets.pictures
            })
        isWanted: sheets.pictures.large.isOpen
        onClosed: sheets.closed()
    }
    Connections {
        target: large.instance as LargePage

        function onCaptionWanted(): void {
            sheets.editCaption();
        }
    }
    OnDemand {
        sourceComponent: CutOutPage {}
        properties: ({
                session: sheets.pictures.cutOut
            })
        isWanted: sheets.pictures.cutOut.isOpen
        onClosed: sheets.closed()
    }
    OnDemand {
        id: keys

        sourceComponent: HelpSheet {}
        properties: ({})
        onClosed: sheets.closed()
    }
}
