// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The shelf at the bottom: what can be put up, what can be taken back, and the way to the pages.
Rectangle {
    id: dock

    required property EditorView editor
    required property PictureDesk pictures
    required property string background

    signal countdownWanted
    signal doodleWanted
    signal boardPageWanted
    signal settingsWanted

    width: row.implicitWidth + 2 * Theme.size.small
    height: row.implicitHeight + 2 * Theme.size.small
    radius: Theme.size.largeRadius
    color: Theme.color.surface
    border.width: 1
    border.color: Theme.color.edge
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("put something up")

    Shadow {
        radius: dock.radius
        lift: 10
    }

    // The glass behind it is not meant.
    MouseArea {
        anchors.fill: parent
    }

    component Divider: Rectangle {
        width: 1
        height: 24
        color: Theme.color.line
        anchors.verticalCenter: parent.verticalCenter
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.size.tiny

        IconButton {
            text: qsTr("a note")
            hint: "N"
            iconName: "sticky-note"
            onClicked: dock.editor.putUpNote("butter")
        }
        IconButton {
            text: qsTr("a photo")
            iconName: "image"
            onClicked: dock.pictures.choose(false)
        }
        IconButton {
            text: qsTr("a sticker")
            iconName: "sticker"
            onClicked: dock.pictures.choose(true)
        }
        IconButton {
            text: qsTr("doodle")
            hint: "D"
            iconName: "pencil"
            onClicked: dock.doodleWanted()
        }
        IconButton {
            text: qsTr("a countdown")
            iconName: "hourglass"
            onClicked: dock.countdownWanted()
        }
        IconButton {
            text: qsTr("a block together")
            iconName: "timer"
            onClicked: dock.editor.putUpCard("pomodoro")
        }
        Divider {}
        IconButton {
            text: qsTr("their window")
            iconName: "house"
            onClicked: dock.editor.putUpCard("location")
        }
        IconButton {
            text: qsTr("their music")
            iconName: "disc-3"
            onClicked: dock.editor.putUpCard("nowPlayingSlot")
        }
        IconButton {
            text: qsTr("both clocks")
            iconName: "clock"
            onClicked: dock.editor.putUpCard("timezones")
        }
        IconButton {
            text: qsTr("their day")
            iconName: "calendar-heart"
            onClicked: dock.editor.putUpCard("calendar")
        }
        Divider {}
        IconButton {
            id: palette

            text: qsTr("paper colour")
            iconName: "palette"
            checkable: true
        }
        IconButton {
            text: qsTr("take back")
            hint: "Ctrl Z"
            iconName: "undo-2"
            enabled: dock.editor.canUndo
            onClicked: dock.editor.undo()
        }
        IconButton {
            text: qsTr("do again")
            hint: "Ctrl Shift Z"
            iconName: "redo-2"
            enabled: dock.editor.canRedo
            onClicked: dock.editor.redo()
        }
        Divider {}
        IconButton {
            text: qsTr("the two of you")
            iconName: "users"
            onClicked: dock.boardPageWanted()
        }
        IconButton {
            text: qsTr("settings")
            iconName: "settings"
            onClicked: dock.settingsWanted()
        }
    }

    Rectangle {
        id: swatches

        anchors {
            bottom: parent.top
            bottomMargin: Theme.size.small
        }
        x: Math.round(row.x + palette.x + (palette.width - width) / 2)
        visible: palette.checked
        width: papers.implicitWidth + 2 * Theme.size.tiny
        height: papers.implicitHeight + 2 * Theme.size.tiny
        radius: Theme.size.radius
        color: Theme.color.surface
        border.width: 1
        border.color: Theme.color.edge

        Shadow {
            radius: swatches.radius
            lift: 6
        }

        PaperSwatches {
            id: papers

            anchors.centerIn: parent
            chosen: dock.background
            onChose: name => {
                dock.editor.setBackground(name);
                palette.checked = false;
            }
        }
    }
}
