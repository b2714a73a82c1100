// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Six digits to read out over the phone, and a link to send. A code is made as soon as the page opens.
SheetPage {
    id: page

    required property AppView view
    readonly property bool isPartnerHere: view.face.isPartnerHere

    /// They started a board as well, and read out its code.
    signal codeAsked
    signal done

    onVisibleChanged: {
        if (visible && (view.face.code === "" || view.face.isCodeOver))
            view.mintCode();
        if (visible)
            view.checkLink();
    }
    onIsPartnerHereChanged: if (isPartnerHere) onwards.forceActiveFocus(Qt.OtherFocusReason)

    Column {
        width: parent.width
        spacing: Theme.size.small

        HandText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: page.isPartnerHere ? qsTr("%1 is here").arg(page.view.face.partnerName) : qsTr("bring them over")
            isLarge: true
        }
        Body {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            isSoft: true
            text: page.isPartnerHere ? qsTr("you two have a window now.") : qsTr("read these digits to them. they type them in on their side.")
        }
    }
    ThreadMark {
        visible: page.isPartnerHere
        anchors.horizontalCenter: parent.horizontalCenter
    }
    CodeCard {
        visible: !page.isPartnerHere
        width: parent.width
        view: page.view
    }
    LinkCard {
        visible: !page.isPartnerHere && page.view.face.link !== ""
        width: parent.width
        view: page.view
    }
    Row {
        visible: !page.isPartnerHere
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: Theme.size.small

        Body {
            height: code.height
            verticalAlignment: Text.AlignVCenter
            isSmall: true
            isSoft: true
            text: qsTr("did they start one, too?")
        }
        PaperButton {
            id: code

            kind: PaperButton.Quiet
            text: qsTr("i have a code")
            onClicked: page.codeAsked()
        }
    }
    PaperButton {
        id: onwards

        width: parent.width
        focus: true
        kind: page.isPartnerHere ? PaperButton.Primary : PaperButton.Plain
        text: page.isPartnerHere ? qsTr("to our board") : qsTr("they can come later")
        onClicked: page.done()
    }
}
