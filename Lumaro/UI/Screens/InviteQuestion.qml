// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// An invite was opened on a computer that is on a board: the person says which of the two it shall be on.
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

        focus: true
        iconName: "link"
        heading: qsTr("another board?")
        words: qsTr("you're on a board with %1. join %2's board instead? this computer leaves the one with %1.").arg(own).arg(asked)
        yes: qsTr("join theirs")
        no: qsTr("stay")
        onAgreed: sheet.view.switchBoard(true)
        onRefused: sheet.view.switchBoard(false)

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
    }
}
