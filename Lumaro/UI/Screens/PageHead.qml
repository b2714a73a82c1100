// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// What a page is about, with the way back before it.
Item {
    id: head

    property string text
    property bool hasBack: true
    property bool isLong: false

    signal backAsked

    width: parent ? parent.width : 0
    height: Math.max(Theme.size.control + 8, words.implicitHeight)

    IconButton {
        x: -10
        anchors.verticalCenter: parent.verticalCenter
        visible: head.hasBack
        iconName: "chevron-left"
        text: qsTr("back")
        isTipBelow: true
        onClicked: head.backAsked()
    }
    HandText {
        id: words

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.size.huge
        anchors.rightMargin: Theme.size.huge
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: Text.AlignHCenter
        text: head.text
        isLarge: true
        font.pixelSize: head.isLong ? 36 : Math.round(Theme.size.handText * 1.75)
    }
}
