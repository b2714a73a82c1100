// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Where the board is to live: asked once, of a person whose program was not told by those who built it.
SheetPage {
    id: page

    required property HomeView home

    signal addressAsked
    signal backAsked

    PageHead {
        isLong: true
        text: qsTr("where should our board live?")
        onBackAsked: page.backAsked()
    }
    Column {
        width: parent.width
        spacing: Theme.size.small

        PaperButton {
            width: parent.width
            focus: true
            kind: PaperButton.Primary
            enabled: !page.home.face.isStarting
            text: page.home.face.isStarting ? qsTr("just a moment…") : qsTr("this computer keeps it")
            onClicked: page.home.keepHere(true)
        }
        Body {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            isSmall: true
            isSoft: true
            visible: !page.home.face.isStarting
            text: page.home.face.keeping
        }
    }
    Column {
        width: parent.width
        spacing: Theme.size.small

        PaperButton {
            width: parent.width
            enabled: !page.home.face.isStarting
            text: qsTr("in a room that we have")
            onClicked: page.addressAsked()
        }
        Body {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            isSmall: true
            isSoft: true
            text: qsTr("a server of yours, or of somebody you trust, that is always on.")
        }
    }
}
