// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// A slip of paper under the selected item with what can be done to it.
Rectangle {
    id: bar

    required property BoardView board
    required property EditorView editor
    required property BoardScene scene
    required property MusicView music
    required property PlaceView place
    readonly property selectedItem item: editor.selected
    readonly property bool isBlock: item.kind === "pomodoro"

    signal editWanted
    /// One's own music is to be shared, or no longer.
    signal sharingWanted
    /// The same of one's hours.
    signal hoursWanted
    /// The bar had the keyboard focus when it went.
    signal keysLeft

    function takeKeys(): void {
        keys.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason);
    }

    onVisibleChanged: {
        if (!visible && keys.activeFocus) {
            keysLeft();
        }
    }

    readonly property real middle: board.canvas.viewX(item.centerX)
    readonly property real below: board.canvas.viewY(item.centerY + item.height / 2) + 28
    readonly property real above: board.canvas.viewY(item.centerY - item.height / 2) - 64 - height

    /// From under the status line.
    readonly property real highest: Theme.size.medium + 32 + Theme.size.small

    x: Math.round(Math.max(Theme.size.small, Math.min(board.width - width - Theme.size.small, middle - width / 2)))
    y: Math.round(below + height + 96 < board.height ? below : Math.max(highest, above))
    width: Math.max(row.implicitWidth, track.width, whose.width) + 2 * Theme.size.tiny
    height: whose.height + track.height + row.implicitHeight + 2 * Theme.size.tiny
    radius: Theme.size.radius
    color: Theme.color.raised
    border.width: 1
    border.color: Theme.color.edge

    Shadow {
        radius: bar.radius
        lift: 6
    }

    // A click does not take the keyboard focus from the board.
    component Tool: IconButton {
        focusPolicy: Qt.TabFocus
    }
    component Word: Chip {
        focusPolicy: Qt.TabFocus
    }

    // Clicks between the buttons do not fall through to the board.
    MouseArea {
        anchors.fill: parent
    }

    WhoseLine {
        id: whose

        anchors.horizontalCenter: parent.horizontalCenter
        scene: bar.scene
        itemId: bar.item.itemId
    }

    TrackLines {
        id: track

        anchors.horizontalCenter: parent.horizontalCenter
        y: whose.height + Theme.size.tiny
        scene: bar.scene
        itemId: bar.item.kind === "nowPlayingSlot" ? bar.item.itemId : ""
    }

    FocusScope {
        id: keys

        anchors.horizontalCenter: parent.horizontalCenter
        y: Theme.size.tiny + whose.height + track.height
        width: row.implicitWidth
        height: row.implicitHeight

        Row {
            id: row

            spacing: 2

            Word {
                visible: bar.isBlock && bar.item.canJoin
                text: qsTr("join")
                iconName: "users"
                onClicked: bar.editor.joinBlock()
            }
            Word {
                visible: bar.isBlock && bar.item.canStart
                text: qsTr("%n minutes", "", 15)
                onClicked: bar.editor.startBlock(15)
            }
            Word {
                visible: bar.isBlock && bar.item.canStart
                text: qsTr("%n minutes", "", 25)
                onClicked: bar.editor.startBlock(25)
            }
            Word {
                visible: bar.isBlock && bar.item.canStart
                text: qsTr("%n minutes", "", 50)
                onClicked: bar.editor.startBlock(50)
            }
            Word {
                visible: bar.isBlock && bar.item.canCoolDown
                text: qsTr("cool down")
                onClicked: bar.editor.coolDown()
            }
            Word {
                visible: bar.isBlock && bar.item.canRest
                text: qsTr("rest")
                onClicked: bar.editor.rest()
            }
            Word {
                visible: bar.item.isOwnMusic
                checkable: bar.music.isDecided
                checked: bar.music.isShared
                text: qsTr("share what i'm listening to")
                Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
                onClicked: bar.sharingWanted()
            }
            Word {
                visible: bar.item.kind === "location"
                text: bar.item.isOwnPlace ? bar.place.offer : qsTr("where they are")
                iconName: "house"
                onClicked: bar.editWanted()
            }
            Word {
                visible: bar.item.kind === "timezones" && !bar.place.areHoursKnown
                text: qsTr("let them see your hours")
                iconName: "clock"
                onClicked: bar.hoursWanted()
            }
            Word {
                readonly property string question: whose.missing === "" ? "" : bar.scene.questionOf(bar.item.itemId)

                visible: question !== ""
                text: qsTr("ask them")
                onClicked: bar.place.askThem(question)
            }
            PaperSwatches {
                visible: bar.item.kind === "note"
                chosen: bar.item.paper
                onChose: name => bar.editor.setPaper(name)
            }
            Tool {
                visible: bar.item.canEdit
                text: qsTr("edit")
                hint: qsTr("Enter")
                iconName: "pencil"
                onClicked: bar.editWanted()
            }
            Tool {
                visible: bar.item.canKeep
                checkable: true
                checked: bar.item.isKept
                text: bar.item.isKept ? qsTr("let it go after a day") : qsTr("keep it up")
                hint: "K"
                iconName: "heart"
                onClicked: bar.editor.setKept(!bar.item.isKept)
            }
            Tool {
                text: qsTr("to the front")
                hint: "F"
                iconName: "bring-to-front"
                onClicked: bar.editor.bringToFront()
            }
            Tool {
                text: qsTr("take down")
                hint: qsTr("Delete")
                iconName: "trash-2"
                onClicked: bar.editor.takeDown()
            }
        }
    }
}
