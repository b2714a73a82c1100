// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// One part of the keys and gestures: its heading, and what each does.
Column {
    id: group

    required property string heading
    required property var lines
    readonly property real keysWidth: Math.round(0.38 * width)

    spacing: 3

    Title {
        width: parent.width
        isSmall: true
        text: group.heading
        bottomPadding: 2
    }
    Repeater {
        model: group.lines

        Item {
            id: line

            required property var modelData
            readonly property real keysWidth: (parent as HelpGroup)?.keysWidth ?? 0

            width: parent?.width ?? 0
            height: Math.max(label.height, does.implicitHeight)
            Accessible.role: Accessible.StaticText
            Accessible.name: line.modelData.keys + ": " + line.modelData.does

            Rectangle {
                id: label

                width: Math.min(line.keysWidth, keys.implicitWidth + 2 * Theme.size.small)
                height: keys.implicitHeight + 4
                radius: 6
                color: Theme.color.raised
                border.width: 1
                border.color: Theme.color.line

                Body {
                    id: keys

                    anchors.centerIn: parent
                    width: Math.min(implicitWidth, line.keysWidth - 2 * Theme.size.small)
                    horizontalAlignment: Text.AlignHCenter
                    isSmall: true
                    lineHeight: 1
                    font.weight: Font.DemiBold
                    text: line.modelData.keys
                    Accessible.ignored: true
                }
            }
            Body {
                id: does

                x: line.keysWidth + Theme.size.small
                y: 2
                width: parent.width - x
                isSmall: true
                lineHeight: 1.05
                text: line.modelData.does
                Accessible.ignored: true
            }
        }
    }
}
