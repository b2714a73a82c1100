// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What is known of the place behind a window. Behind one's own side of the glass also what is told of it.
Sheet {
    id: sheet

    required property PlaceView place
    required property BoardScene scene
    property string itemId
    property bool isOwn: false
    property placeWords theirs
    readonly property placeWords words: isOwn ? place.told : theirs

    /// Of the window with that id on the board.
    function show(item: string, own: bool): void {
        itemId = item;
        isOwn = own;
        theirs = scene.placeOf(item);
        name.text = place.ownName;
        open();
        if (own && !place.isDecided) {
            question.takeKeys();
        } else if (own && place.isOff) {
            how.pick();
        }
    }
    function giveName(): void {
        place.rename(name.text);
        close();
    }

    title: words.title
    paperWidth: 480

    Body {
        visible: !sheet.isOwn && !sheet.words.isThere
        width: parent.width
        text: sheet.words.missing
    }
    PlaceLines {
        visible: words.isThere
        words: sheet.words
    }
    PlaceQuestion {
        id: question

        visible: sheet.isOwn && !sheet.place.isDecided
        place: sheet.place
        onAnswered: if (!sheet.place.isShared) sheet.close()
    }
    Toggle {
        visible: sheet.isOwn && sheet.place.isDecided
        width: parent.width
        text: qsTr("let it see where you are")
        helper: qsTr("your neighbourhood, behind your side of the glass — never your address")
        checked: sheet.place.isShared
        onClicked: sheet.place.share(checked)
    }
    Column {
        visible: sheet.isOwn && sheet.words.isThere
        width: parent.width
        spacing: Theme.size.small

        Row {
            width: parent.width
            spacing: Theme.size.medium

            Field {
                id: name

                width: parent.width - parent.spacing - done.width
                label: qsTr("what do you call it here?")
                placeholder: qsTr("home, gran's, the library")
                maximumLength: 40
                onAccepted: sheet.giveName()
            }
            PaperButton {
                id: done

                y: name.height - height
                text: qsTr("done")
                onClicked: sheet.giveName()
            }
        }
        Body {
            width: parent.width
            isSmall: true
            isSoft: true
            text: qsTr("they read it on your window. an empty name forgets it.")
        }
    }
    PlaceHow {
        id: how

        visible: sheet.isOwn && sheet.place.isDecided
        place: sheet.place
    }
    Connections {
        target: sheet.scene

        function onBoardChanged(): void {
            sheet.theirs = sheet.scene.placeOf(sheet.itemId);
        }
    }
}
