// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The six digits, big enough to read out, and how long they work.
Rectangle {
    id: card

    required property AppView view
    readonly property bool isThere: view.face.code !== "" && !view.face.isCodeOver

    implicitHeight: column.implicitHeight + 2 * Theme.size.large
    radius: Theme.size.radius
    color: Theme.color.raised
    border.width: 1
    border.color: Theme.color.line

    Column {
        id: column

        anchors.centerIn: parent
        width: parent.width - 2 * Theme.size.large
        spacing: 2

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: card.isThere ? card.view.face.code : "··· ···"
            color: card.isThere ? Theme.color.ink : Theme.color.away
            textFormat: Text.PlainText
            font.pixelSize: 60
            font.weight: Font.ExtraBold
            font.letterSpacing: 3
            Accessible.role: Accessible.StaticText
            Accessible.name: card.isThere ? qsTr("the code is %1").arg(text) : qsTr("there is no code yet")
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.size.small

            Body {
                anchors.verticalCenter: parent.verticalCenter
                isSmall: true
                isSoft: true
                text: card.view.face.isMintingCode ? qsTr("fetching a code…") : card.view.face.codeWorks
            }
            Chip {
                visible: !card.isThere && !card.view.face.isMintingCode
                text: card.view.face.code === "" ? qsTr("make a code") : qsTr("a fresh one")
                iconName: "refresh-cw"
                onClicked: card.view.mintCode()
            }
        }
    }
}
