// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Something to be told, with one or two answers.
SheetPage {
    id: page

    property string iconName
    required property string heading
    property string words
    required property string yes
    property string no

    signal agreed
    signal refused

    Rectangle {
        visible: page.iconName !== ""
        anchors.horizontalCenter: parent.horizontalCenter
        width: 72
        height: 72
        radius: 36
        color: Theme.color.pressed

        Icon {
            anchors.centerIn: parent
            name: page.iconName === "" ? "heart" : page.iconName
            side: 30
            ink: Theme.color.accent
        }
    }
    Column {
        width: parent.width
        spacing: Theme.size.small

        HandText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: page.heading
            isLarge: true
            font.pixelSize: 38
            lineHeight: 0.9
        }
        Body {
            width: parent.width
            visible: text !== ""
            horizontalAlignment: Text.AlignHCenter
            text: page.words
            isSoft: true
        }
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        topPadding: Theme.size.small
        spacing: Theme.size.medium

        PaperButton {
            visible: page.no !== ""
            text: page.no
            onClicked: page.refused()
        }
        PaperButton {
            focus: true
            kind: PaperButton.Primary
            text: page.yes
            onClicked: page.agreed()
        }
    }
}
