// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What the partner learns of one's hours, in words, before they are shared for the first time; and the answer.
Column {
    id: question

    required property PlaceView place

    signal answered

    /// To the answer that changes nothing.
    function takeKeys(): void {
        no.forceActiveFocus(Qt.TabFocusReason);
    }
    function answer(shares: bool): void {
        place.shareHours(shares);
        answered();
    }

    width: parent ? parent.width : 0
    spacing: Theme.size.medium

    Body {
        width: parent.width
        text: question.place.zone === "" ? qsTr("this computer's time zone has no name that others know, so there is nothing to share yet.") : qsTr("what leaves this computer: the name of your time zone (%1), and nothing else of where you are. their computer remembers it while you're away, until you take it back.").arg(question.place.zone)
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
