// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Both people are on the board: which of them sits here?
SheetPage {
    id: page

    required property AppView view

    PageHead {
        text: qsTr("which of you is this mac?")
        isLong: true
        onBackAsked: page.view.forgetPairingFailure()
    }
    Body {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        isSoft: true
        text: qsTr("both of you are on this board already.")
    }
    Row {
        width: parent.width
        spacing: Theme.size.large

        PersonButton {
            width: (parent.width - parent.spacing) / 2
            focus: page.view.face.suggested !== 1
            text: page.view.face.firstName
            isSuggested: page.view.face.suggested === 0
            onClicked: page.view.chooseOneself(0)
        }
        PersonButton {
            width: (parent.width - parent.spacing) / 2
            focus: page.view.face.suggested === 1
            text: page.view.face.secondName
            isSuggested: page.view.face.suggested === 1
            isSecond: true
            onClicked: page.view.chooseOneself(1)
        }
    }
}
