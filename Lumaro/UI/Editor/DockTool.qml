// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A button of the dock: an icon, and under it a word where the dock has room for words. A click does not take the
/// keyboard focus from the board.
Pressable {
    id: tool

    required property string iconName
    required property string word
    /// The key that does the same.
    property string hint
    readonly property bool hasWord: (parent as DockGroup)?.hasWords ?? false
    readonly property real wordyWidth: Math.max(Theme.size.control, Math.ceil(label.implicitWidth) + Theme.size.small)
    readonly property color ink: checked ? Theme.color.onAccent : Theme.color.ink

    focusPolicy: Qt.TabFocus
    implicitWidth: hasWord ? wordyWidth : Theme.size.control
    implicitHeight: hasWord ? 52 : Theme.size.control
    give: 0.9

    Icon {
        anchors.horizontalCenter: parent.horizontalCenter
        y: tool.hasWord ? 7 : (parent.height - height) / 2
        name: tool.iconName
        ink: tool.ink
    }
    Text {
        id: label

        anchors.horizontalCenter: parent.horizontalCenter
        y: 30
        visible: tool.hasWord
        text: tool.word
        textFormat: Text.PlainText
        color: tool.ink
        font.pixelSize: Theme.size.captionText - 1
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }
    Tip {
        text: tool.hint === "" ? tool.text : tool.text + "  ·  " + tool.hint
        isWanted: tool.enabled && (tool.hovered || tool.visualFocus) && !tool.down
    }

    background: Rectangle {
        radius: Theme.size.radius
        color: {
            if (tool.checked)
                return Theme.color.accent;
            return tool.down || tool.hovered ? Theme.color.pressed : "transparent";
        }

        FocusRing {
            isShown: tool.visualFocus
            anchors.margins: -2
        }
    }
}
