// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Everything about the board that is not on it.
Sheet {
    id: page

    required property AppView view

    title: qsTr("our board")
    paperWidth: 560
    onOpened: view.checkLink()

    PeopleSection {
        heading: qsTr("who is here")
        isFirst: true
        view: page.view
    }
    Section {
        heading: qsTr("bring them over")

        CodeCard {
            width: parent.width
            view: page.view
        }
        LinkCard {
            visible: page.view.face.link !== ""
            width: parent.width
            view: page.view
        }
        PaperButton {
            visible: page.view.face.link === ""
            x: -Theme.size.medium
            kind: PaperButton.Quiet
            iconName: "link"
            text: qsTr("make a link")
            onClicked: page.view.makeLink()
        }
        PaperButton {
            visible: !page.view.face.hasPartner
            x: -Theme.size.medium
            kind: PaperButton.Quiet
            iconName: "users"
            text: qsTr("i have a code")
            onClicked: {
                page.close();
                page.view.goTo("bringThemOver");
            }
        }
        AskOnce {
            visible: page.view.face.link !== ""
            iconName: "refresh-cw"
            text: qsTr("reset our link")
            question: qsTr("codes and links you gave out before stop working. you both stay on the board.")
            yes: qsTr("a new link, please")
            onAgreed: page.view.resetLinks()
        }
    }
    HomeSection {
        home: page.view.home
    }
    Section {
        heading: qsTr("where it lies")

        Body {
            width: parent.width
            isSmall: true
            isSoft: true
            wrapMode: Text.WrapAnywhere
            text: page.view.folder
        }
        Flow {
            width: parent.width
            spacing: Theme.size.medium

            PaperButton {
                iconName: "folder"
                text: qsTr("open the folder")
                onClicked: page.view.openFolder()
            }
            PaperButton {
                iconName: "download"
                text: qsTr("keep a copy…")
                onClicked: page.view.askWhereToExport()
            }
        }
    }
    Section {
        heading: qsTr("going separate ways")

        AskOnce {
            visible: page.view.face.hasPartner
            iconName: "users"
            text: qsTr("let %1’s devices go").arg(page.view.face.partnerName)
            question: qsTr("%1 comes off the board on all their devices. a code or link brings them back.").arg(page.view.face.partnerName)
            yes: qsTr("let them go")
            onAgreed: page.view.releasePartner()
        }
        AskOnce {
            iconName: "log-out"
            text: qsTr("leave the board")
            question: qsTr("it comes down on this computer. what hangs there stays for %1.").arg(page.view.face.partnerName)
            yes: qsTr("leave")
            onAgreed: {
                page.close();
                page.view.leaveBoard();
            }
        }
    }
}
