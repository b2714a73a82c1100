// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What leaves this computer when the place is shared, in words, before it is for the first time; and the answer.
Column {
    id: question

    required property PlaceView place
    property bool isPicking: false

    signal answered

    /// To the answer that changes nothing.
    function takeKeys(): void {
        no.forceActiveFocus(Qt.TabFocusReason);
    }
    function answer(shares: bool): void {
        place.share(shares);
        answered();
    }

    width: parent ? parent.width : 0
    spacing: Theme.size.medium

    Body {
        width: parent.width
        text: qsTr("they'll see your neighbourhood, never your address")
        font.weight: Font.DemiBold
    }
    Body {
        width: parent.width
        text: qsTr("what leaves this computer: the name of your town or neighbourhood, where that is to about a kilometre (about 100 m if you choose your block), your time zone, and the weather. your room and the two of you see it, and you can stop whenever you like.")
    }
    Body {
        visible: !question.isPicking
        width: parent.width
        isSmall: true
        isSoft: true
        text: qsTr("to find itself, this computer asks a public service with the wi-fi networks in sight. “i'm\u00a0in\u00a0…” asks nobody where you are.")
    }
    Flow {
        visible: !question.isPicking
        width: parent.width
        spacing: Theme.size.medium

        PaperButton {
            kind: PaperButton.Primary
            text: qsTr("yes, find me")
            onClicked: {
                question.place.findForMe();
                question.answer(true);
            }
        }
        PaperButton {
            id: byHand

            text: qsTr("i'm in …")
            onClicked: {
                question.isPicking = true;
                picker.takeKeys();
            }
        }
        PaperButton {
            id: no

            text: qsTr("no")
            onClicked: question.answer(false)
        }
    }
    PlacePicker {
        id: picker

        visible: question.isPicking
        width: parent.width
        place: question.place
        onChosen: question.answer(true)
        onCancelled: {
            question.isPicking = false;
            byHand.forceActiveFocus(Qt.TabFocusReason);
        }
    }
}
