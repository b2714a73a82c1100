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

        focus: true
        iconName: "link"
        heading: own === "" ? qsTr("whose board is it?") : qsTr("another board?")
        words: own === "" ? qsTr("%1 invites you to a board on %2. join it?").arg(asked).arg(server) : qsTr("you're on a board with %1. join %2's board instead? this computer leaves the one with %1.").arg(own).arg(asked)
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
        Binding on server {
            value: sheet.view.face.inviteQuestion.server
            when: sheet.view.face.inviteQuestion.isAsked
            restoreMode: Binding.RestoreNone
        }
    }
}
