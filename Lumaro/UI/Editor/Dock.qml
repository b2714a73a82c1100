// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The shelf at the bottom: what can be put up, what can be taken back, and the way to the pages.
Rectangle {
    id: dock

    required property EditorView editor
    required property PictureExchange pictures
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

    // Clicks between the buttons do not fall through to the board.
    MouseArea {
        anchors.fill: parent
    }

    // A click does not take the keyboard focus from the board.
    component Tool: IconButton {
        focusPolicy: Qt.TabFocus
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

        Tool {
            text: qsTr("a note")
            hint: "N"
            iconName: "sticky-note"
            onClicked: dock.editor.beginNote()
        }
        Tool {
            text: qsTr("a photo")
            iconName: "image"
            onClicked: dock.pictures.choose(false)
        }
        Tool {
            text: qsTr("a sticker")
            iconName: "sticker"
            onClicked: dock.pictures.choose(true)
        }
        Tool {
            text: qsTr("doodle")
            hint: "D"
            iconName: "pencil"
            onClicked: dock.doodleWanted()
        }
        Tool {
            text: qsTr("a countdown")
            iconName: "hourglass"
            onClicked: dock.countdownWanted()
        }
        Tool {
            text: qsTr("a block together")
            iconName: "timer"
            onClicked: dock.editor.putUpCard("pomodoro")
        }
        Divider {}
        Tool {
            text: qsTr("their window")
            iconName: "house"
            onClicked: dock.editor.putUpCard("location")
        }
        Tool {
            text: qsTr("their music")
            iconName: "disc-3"
            onClicked: dock.editor.putUpCard("nowPlayingSlot")
        }
        Tool {
            text: qsTr("both clocks")
            iconName: "clock"
            onClicked: dock.editor.putUpCard("timezones")
        }
        Tool {
            text: qsTr("their day")
            iconName: "calendar-heart"
            onClicked: dock.editor.putUpCard("calendar")
        }
        Divider {}
        Tool {
            id: palette

            text: qsTr("paper colour")
            iconName: "palette"
            checkable: true
        }
        Tool {
            text: qsTr("take back")
            hint: qsTr("Ctrl Z")
            iconName: "undo-2"
            enabled: dock.editor.canUndo
            onClicked: dock.editor.undo()
        }
        Tool {
            text: qsTr("do again")
            hint: qsTr("Ctrl Shift Z")
            iconName: "redo-2"
            enabled: dock.editor.canRedo
            onClicked: dock.editor.redo()
        }
        Divider {}
        Tool {
            text: qsTr("the two of you")
            iconName: "users"
            onClicked: dock.boardPageWanted()
        }
        Tool {
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
