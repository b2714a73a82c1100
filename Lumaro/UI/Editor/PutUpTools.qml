// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What can be put up: what people make, and the live cards.
Row {
    id: tools

    required property EditorView editor
    required property PictureExchange pictures
    required property bool hasWords
    readonly property real wordyWidth: making.wordyWidth + cards.wordyWidth + 1 + 2 * spacing
    readonly property real plainWidth: making.plainWidth + cards.plainWidth + 1 + 2 * spacing

    signal countdownWanted
    signal doodleWanted

    spacing: Theme.size.tiny

    DockGroup {
        id: making

        hasWords: tools.hasWords

        DockTool {
            text: qsTr("a note")
            word: qsTr("note")
            hint: "N"
            iconName: "sticky-note"
            onClicked: tools.editor.beginNote()
        }
        DockTool {
            text: qsTr("a photo")
            word: qsTr("photo")
            iconName: "image"
            onClicked: tools.pictures.choose(false)
        }
        DockTool {
            text: qsTr("a sticker")
            word: qsTr("sticker")
            iconName: "sticker"
            onClicked: tools.pictures.choose(true)
        }
        DockTool {
            text: qsTr("doodle")
            word: qsTr("doodle")
            hint: "D"
            iconName: "pencil"
            onClicked: tools.doodleWanted()
        }
        DockTool {
            text: qsTr("a countdown")
            word: qsTr("countdown")
            iconName: "hourglass"
            onClicked: tools.countdownWanted()
        }
        DockTool {
            text: qsTr("a block together")
            word: qsTr("block")
            iconName: "timer"
            onClicked: tools.editor.putUpCard("pomodoro")
        }
    }
    DockDivider {
        anchors.verticalCenter: parent.verticalCenter
    }
    DockGroup {
        id: cards

        hasWords: tools.hasWords

        DockTool {
            text: qsTr("their window")
            word: qsTr("window")
            iconName: "house"
            onClicked: tools.editor.putUpCard("location")
        }
        DockTool {
            text: qsTr("their music")
            word: qsTr("music")
            iconName: "disc-3"
            onClicked: tools.editor.putUpCard("nowPlayingSlot")
        }
        DockTool {
            text: qsTr("both clocks")
            word: qsTr("clocks")
            iconName: "clock"
            onClicked: tools.editor.putUpCard("timezones")
        }
        DockTool {
            text: qsTr("their day")
            word: qsTr("day")
            iconName: "calendar-heart"
            onClicked: tools.editor.putUpCard("calendar")
        }
    }
}
