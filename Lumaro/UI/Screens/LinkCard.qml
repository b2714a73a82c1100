// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The link that brings the partner, to copy or to be read by a telephone.
Item {
    id: card

    required property AppView view

    implicitHeight: Math.max(words.implicitHeight, picture.height)

    Column {
        id: words

        anchors.left: parent.left
        anchors.right: picture.left
        anchors.rightMargin: Theme.size.large
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.size.small

        Title {
            width: parent.width
            text: qsTr("or send them the link")
            isSmall: true
        }
        Body {
            width: parent.width
            text: card.view.face.link
            isSmall: true
            isSoft: true
            wrapMode: Text.WrapAnywhere
            maximumLineCount: 2
            elide: Text.ElideRight
        }
        CopyButton {
            text: qsTr("copy the link")
            onCopied: card.view.copyText(card.view.face.link)
        }
    }
    Rectangle {
        id: picture

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 156
        height: 156
        radius: Theme.size.smallRadius
        color: code.paper
        border.width: 1
        border.color: Theme.color.line

        QrCode {
            id: code

            anchors.fill: parent
            anchors.margins: 3
            // Cameras read dark on light alone, so the dark appearance has it too.
            ink: "#3b322b"
            paper: Theme.isDark ? "#eadfce" : "#fffcf5"
            text: card.view.face.link
            Accessible.role: Accessible.Graphic
            Accessible.name: qsTr("the link, for a telephone's camera")
        }
    }
}
