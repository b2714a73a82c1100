// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A person as their picture, or else as the first letter of their name, on a round of their own colour.
Rectangle {
    id: initial

    required property string name
    property bool isSecond: false
    property real side: 44
    property url picture

    width: side
    height: side
    radius: side / 2
    color: Qt.darker(Theme.backgroundColor(isSecond ? "sage" : "blush"), Theme.isDark ? 1.18 : 1)
    border.width: 1
    border.color: Qt.darker(color, 1.12)

    Text {
        visible: face.status !== Image.Ready
        anchors.centerIn: parent
        anchors.verticalCenterOffset: -initial.side / 16 // the hand's letters hang low
        text: initial.name.charAt(0).toLowerCase()
        color: "#3b322b" // on paper as it is by day
        textFormat: Text.PlainText
        font.family: Theme.hand
        font.weight: Font.Bold
        font.pixelSize: Math.round(initial.side * 0.62)
    }
    Image {
        id: face

        anchors.fill: parent
        source: initial.picture
        sourceSize.width: initial.side
        sourceSize.height: initial.side
        asynchronous: true
    }
}
