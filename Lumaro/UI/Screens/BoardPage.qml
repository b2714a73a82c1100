// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Everything about the board that is not on it.
Sheet {
    id: page

    required property AppView view

    title: "our board"
    paperWidth: 560

    PeopleSection {
        heading: "who is here"
        isFirst: true
        view: page.view
    }
    Section {
        heading: "bring them over"

        CodeCard {
            width: parent.width
            view: page.view
        }
        LinkCard {
            visible: page.view.face.link !== ""
            width: parent.width
            view: page.view
        }
        AskOnce {
            iconName: "refresh-cw"
            text: page.view.face.link === "" ? "make a link" : "reset our link"
            question: "codes and links you gave out before stop working. you both stay on the board."
            yes: "a new link, please"
            onAgreed: page.view.resetLinks()
        }
    }
    Section {
        heading: "where it lies"

        Body {
            width: parent.width
            isSmall: true
            isSoft: true
            wrapMode: Text.WrapAnywhere
            text: page.view.folder
        }
        Row {
            spacing: Theme.size.medium

            PaperButton {
                iconName: "folder"
                text: "open the folder"
                onClicked: page.view.openFolder()
            }
            PaperButton {
                iconName: "download"
                text: "keep a copy…"
                onClicked: page.view.askWhereToExport()
            }
        }
    }
    Section {
        heading: "going separate ways"

        AskOnce {
            visible: page.view.face.hasPartner
            iconName: "users"
            text: "let " + page.view.face.partnerName + "’s devices go"
            question: page.view.face.partnerName + " comes off the board on all their devices. a code or link brings them back."
            yes: "let them go"
            onAgreed: page.view.releasePartner()
        }
        AskOnce {
            iconName: "log-out"
            text: "leave the board"
            question: "it comes down on this computer. what hangs there stays for " + page.view.face.partnerName + "."
            yes: "leave"
            onAgreed: {
                page.close();
                page.view.leaveBoard();
            }
        }
    }
}
