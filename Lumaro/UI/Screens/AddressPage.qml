// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Where the board is to live, or where the one is that a code leads to.
SheetPage {
    id: page

    required property HomeView home
    /// A code waits for it.
    property bool isForCode: false

    signal backAsked
    signal used

    onVisibleChanged: if (visible) address.takeKeys()

    PageHead {
        isLong: true
        text: page.isForCode ? qsTr("where is their board?") : qsTr("a room you have")
        onBackAsked: page.backAsked()
    }
    Body {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        isSoft: true
        text: page.isForCode ? qsTr("this computer doesn’t know their room yet. ask them for its address, or for their link, which has it in it.") : qsTr("a room is where your two boards meet: a small program on a computer that is always on.")
    }
    AddressField {
        id: address

        takesKeys: true
        home: page.home
        onUsed: page.used()
        yes: page.isForCode ? qsTr("try the code there") : qsTr("our board lives there")
    }
}
