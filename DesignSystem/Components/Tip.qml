// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// What the control that it is put into is called: shown a while after people come to rest there.
Rectangle {
    id: tip

    required property string text
    required property bool isWanted
    property bool isBelow: false

    visible: false
    z: 10
    width: label.implicitWidth + 2 * Theme.size.medium
    height: label.implicitHeight + 2 * Theme.size.small
    x: Math.round((parent.width - width) / 2)
    y: isBelow ? parent.height + Theme.size.small : -height - Theme.size.small
    radius: Theme.size.smallRadius
    color: Theme.color.ink
    onIsWantedChanged: if (!isWanted) visible = false

    Shadow {
        radius: tip.radius
        lift: 4
    }
    Text {
        id: label

        anchors.centerIn: parent
        text: tip.text
        color: Theme.color.surface
        textFormat: Text.PlainText
        font.pixelSize: Theme.size.captionText
        font.weight: Font.DemiBold
    }
    Timer {
        interval: 500
        running: tip.isWanted && !tip.visible
        onTriggered: tip.visible = true
    }
}
