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
        id: whereabouts

        sourceComponent: PlaceSheet {}
        properties: ({
                place: sheets.place,
                scene: sheets.scene
            })
        onClosed: sheets.closed()
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
