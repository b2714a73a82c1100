// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// One of two people, to choose.
Pressable {
    id: button

    property bool isSuggested: false
    property bool isSecond: false

    implicitHeight: column.implicitHeight + 2 * Theme.size.large
    Accessible.description: isSuggested ? qsTr("most likely you") : ""

    Column {
        id: column

        anchors.centerIn: parent
        width: parent.width - 2 * Theme.size.medium
        spacing: Theme.size.medium

        Initial {
            anchors.horizontalCenter: parent.horizontalCenter
            name: button.text
            isSecond: button.isSecond
            side: 64
        }
        Body {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: button.text
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        Body {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: button.isSuggested ? qsTr("most likely you") : " "
            isSmall: true
            isSoft: true
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Theme.size.radius
        color: button.down || button.hovered ? Theme.color.pressed : Theme.color.raised
        border.width: button.isSuggested ? 2 : 1
        border.color: button.isSuggested ? Theme.color.accent : Theme.color.line

        FocusRing {
            isShown: button.visualFocus
        }
    }
}
