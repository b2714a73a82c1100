// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// An invite was opened that leads away from this computer's board, or to a server that it does not know: the person
/// says whether to follow it.
Sheet {
    id: sheet

    required property AppView view

    paperWidth: 520
    isDismissable: false
    visible: view.face.inviteQuestion.isAsked

    WordPage {
        id: page

        // They stay while the sheet closes.
        property string asked
        property string own

        property string server
        property bool isByCode
        property bool isPartnerOnOwn
        property int items
        readonly property string loss: {
            if (isPartnerOnOwn)
                return qsTr("you're on a board with %1, and the code leads to another one. this computer leaves the one with %1.").arg(own);
            if (items === 0)
                return qsTr("the board you started stays behind.");
            return items === 1 ? qsTr("one thing hangs on the board you started. it stays behind.") : qsTr("%n things hang on the board you started. they stay behind.", "", items);
        }

        focus: true
        iconName: "link"
        heading: own === "" ? qsTr("whose board is it?") : qsTr("another board?")
        words: isByCode ? loss : own === "" ? qsTr("%1 invites you to a board on %2. join it?").arg(asked).arg(server) : qsTr("you're on a board with %1. join %2's board instead? this computer leaves the one with %1.").arg(own).arg(asked)
        yes: own === "" ? qsTr("join them") : qsTr("join theirs")
        no: own === "" ? qsTr("not now") : qsTr("stay")
        onAgreed: sheet.view.acceptInvite(true)
        onRefused: sheet.view.acceptInvite(false)

        Binding on asked {
            value: sheet.view.face.inviteQuestion.askedBoardName
            when: sheet.view.face.inviteQuestion.isAsked
            restoreMode: Binding.RestoreNone
        }
        Binding on own {
            value: sheet.view.face.inviteQuestion.ownBoardName
            when: sheet.view.face.inviteQuestion.isAsked
            restoreMode: Binding.RestoreNone
        }
        Binding on isByCode {
            value: sheet.view.face.inviteQuestion.isByCode
            when: sheet.view.face.inviteQuestion.isAsked
            restoreMode: Binding.RestoreNone
        }
        Binding on isPartnerOnOwn {
            value: sheet.view.face.inviteQuestion.isPartnerOnOwn
            when: sheet.view.face.inviteQuestion.isAsked
            restoreMode: Binding.RestoreNone
        }
        Binding on items {
            value: sheet.view.face.inviteQuestion.items
            when: sheet.view.face.inviteQuestion.isAsked
            restoreMode: Binding.RestoreNone
        }
        Binding on server {
            value: sheet.view.face.inviteQuestion.server
            when: sheet.view.face.inviteQuestion.isAsked
            restoreMode: Binding.RestoreNone
        }
    }
}
