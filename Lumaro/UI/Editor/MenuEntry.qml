// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem

/// One line of a menu; the key that does the same stands behind it.
T.MenuItem {
    id: entry

    property string hint

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: visible ? 36 : 0
    height: implicitHeight
    activeFocusOnTab: visible
    leftPadding: Theme.size.medium
    rightPadding: Theme.size.medium
    Accessible.role: Accessible.MenuItem
    Accessible.name: text

    contentItem: Item {
        implicitWidth: children[0].implicitWidth + Theme.size.large + children[1].implicitWidth

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: entry.text
            textFormat: Text.PlainText
            color: Theme.color.ink
            font.pixelSize: Theme.size.bodyText
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            text: entry.hint
            textFormat: Text.PlainText
            color: Theme.color.softInk
            font.pixelSize: Theme.size.captionText
        }
    }

    background: Rectangle {
        radius: Theme.size.smallRadius
        color: entry.highlighted ? Theme.color.pressed : "transparent"
    }
}
