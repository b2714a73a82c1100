// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What the partner sees of one's music, in words, before anything is shared for the first time; and the answer.
Column {
    id: question

    required property MusicView music

    signal answered

    /// To the answer that changes nothing.
    function takeKeys(): void {
        no.forceActiveFocus(Qt.TabFocusReason);
    }
    function answer(shares: bool): void {
        music.share(shares);
        answered();
    }

    width: parent ? parent.width : 0
    spacing: Theme.size.medium

    Body {
        width: parent.width
        text: qsTr("they'll see the song, the artist, its cover and how far it is. never the album, or where it plays. your room keeps the cover for the two of you, and you can stop whenever you like.")
    }
    Flow {
        width: parent.width
        spacing: Theme.size.medium

        PaperButton {
            kind: PaperButton.Primary
            text: qsTr("yes, share")
            onClicked: question.answer(true)
        }
        PaperButton {
            id: no

            text: qsTr("no")
            onClicked: question.answer(false)
        }
    }
}
