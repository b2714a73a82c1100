// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// A slip of paper beside the selected item with what can be done to it. It covers nothing of the item's frame.
Rectangle {
    id: bar

    /// The selected item's frame, before it is turned; and what the window has for the bar.
    required property rect frame
    required property rect room
    required property EditorView editor
    required property BoardScene scene
    required property MusicView music
    required property PlaceView place
    readonly property selectedItem item: editor.selected
    readonly property bool isBlock: item.kind === "pomodoro"

    signal editWanted
    /// One's own music is to be shared, or no longer.
    signal sharingWanted
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

    readonly property point besides: FrameRoom.besides(Qt.size(width, height), frame, item.tilt, room)

    x: Math.round(besides.x)
    y: Math.round(besides.y)
    width: Math.max(row.width, track.width) + 2 * Theme.size.tiny
    height: track.height + row.height + 2 * Theme.size.tiny
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

    TrackLines {
        id: track

        anchors.horizontalCenter: parent.horizontalCenter
        y: Theme.size.tiny
        scene: bar.scene
        itemId: bar.item.kind === "nowPlayingSlot" ? bar.item.itemId : ""
    }

    FocusScope {
        id: keys

        anchors.horizontalCenter: parent.horizontalCenter
        y: Theme.size.tiny + track.height
        width: row.width
        height: row.height

        // In two rows where one has no room.
        Flow {
            id: row

            readonly property real inOneRow: {
                let sum = -spacing;
                for (let i = 0; i < visibleChildren.length; ++i)
                    sum += visibleChildren[i].width + spacing;
                return sum;
            }

            width: Math.min(inOneRow, bar.room.width - 2 * Theme.size.tiny)
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
