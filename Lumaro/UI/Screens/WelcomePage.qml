// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The first page, and the one that people come back to who are off their board: how would they like to come in?
SheetPage {
    id: page

    property string heading: qsTr("a window for two")
    property string words: qsTr("whatever you stick here, they see there —\non both your desktops, behind the icons.")
    property string startText: qsTr("start our board")
    /// They had a board: the ways back to it come first.
    property bool isReturn: false

    /// "start", "code" or "link".
    signal doorChosen(string door)

    ThreadMark {
        anchors.horizontalCenter: parent.horizontalCenter
    }
    Column {
        width: parent.width
        spacing: Theme.size.small

        HandText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: page.heading
            isLarge: true
        }
        Body {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: page.words
            isSoft: true
        }
    }
    Column {
        width: parent.width
        spacing: Theme.size.medium
        topPadding: Theme.size.small

        PaperButton {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.max(280, implicitWidth)
            visible: !page.isReturn
            focus: visible
            kind: PaperButton.Primary
            text: page.startText
            onClicked: page.doorChosen("start")
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.size.medium

            PaperButton {
                width: Math.max(134, implicitWidth)
                focus: page.isReturn
                kind: page.isReturn ? PaperButton.Primary : PaperButton.Plain
                text: qsTr("i have a code")
                onClicked: page.doorChosen("code")
            }
            PaperButton {
                width: Math.max(134, implicitWidth)
                text: qsTr("i have a link")
                onClicked: page.doorChosen("link")
            }
        }
        PaperButton {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: page.isReturn
            kind: PaperButton.Quiet
            text: page.startText
            onClicked: page.doorChosen("start")
        }
    }
}
