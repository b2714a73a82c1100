// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// A slip of paper beside what is selected with what can be done to it. It covers nothing of the frame.
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

    signal editWanted
    signal captionWanted
    /// The note is to be read large; a link in it is to be opened.
    signal readWanted
    signal linkWanted
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

    readonly property point besides: FrameRoom.besides(Qt.size(width, height), frame, item.tilt, room)

    x: Math.round(besides.x)
    y: Math.round(besides.y)
    width: Math.max(row.width, track.width, whose.width) + 2 * Theme.size.tiny
    height: whose.height + track.height + row.height + 2 * Theme.size.tiny
    radius: Theme.size.radius
    color: Theme.color.raised
    border.width: 1
    border.color: Theme.color.edge

    Shadow {
        radius: bar.radius
        lift: 6
    }

    // Clicks between the buttons do not fall through to the board.
    MouseArea {
        anchors.fill: parent
    }

    WhoseLine {
        id: whose

        anchors.horizontalCenter: parent.horizontalCenter
        scene: bar.scene
        itemId: bar.item.count === 1 ? bar.item.itemId : ""
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

            Body {
                visible: bar.item.count > 1
                height: Theme.size.control
                leftPadding: Theme.size.small
                rightPadding: Theme.size.small
                verticalAlignment: Text.AlignVCenter
                isSoft: true
                text: qsTr("%n things", "", bar.item.count)
            }
            BlockTools {
                editor: bar.editor
            }
            CardTools {
                editor: bar.editor
                music: bar.music
                place: bar.place
                question: whose.missing === "" ? "" : bar.scene.questionOf(bar.item.itemId)
                onEditWanted: bar.editWanted()
                onSharingWanted: bar.sharingWanted()
                onHoursWanted: bar.hoursWanted()
            }
            BarWord {
                visible: bar.item.canKeep && !bar.item.isKept && !bar.item.isLocked
                text: qsTr("keep it up")
                iconName: "heart"
                onClicked: bar.editor.setKept(true)
            }
            NoteTools {
                editor: bar.editor
                onReadWanted: bar.readWanted()
                onLinkWanted: bar.linkWanted()
            }
            BarTool {
                visible: bar.item.canEdit && !bar.item.isLocked
                text: qsTr("edit")
                hint: qsTr("Enter")
                iconName: "pencil"
                onClicked: bar.editWanted()
            }
            BarTool {
                visible: bar.item.canOpen
                text: qsTr("see it large")
                hint: qsTr("Enter")
                iconName: "image"
                onClicked: bar.editWanted()
            }
            BarTool {
                visible: bar.item.canCaption && !bar.item.isLocked
                text: qsTr("caption")
                hint: "C"
                iconName: "pencil"
                onClicked: bar.captionWanted()
            }
            BarTool {
                visible: bar.item.canKeep && bar.item.isKept && !bar.item.isLocked
                checkable: true
                checked: true
                text: qsTr("let it go after a day")
                hint: "K"
                iconName: "pin"
                onClicked: bar.editor.setKept(false)
            }
            BarTool {
                visible: bar.item.count === 1 && !bar.item.isLocked
                text: qsTr("a heart on it")
                hint: "H"
                iconName: "heart"
                onClicked: bar.editor.giveHeart()
            }
            BarTool {
                visible: !bar.item.isLocked
                text: qsTr("to the front")
                hint: "F"
                iconName: "bring-to-front"
                onClicked: bar.editor.bringToFront()
            }
            BarTool {
                visible: !bar.item.isLocked
                text: qsTr("to the back")
                hint: "B"
                iconName: "send-to-back"
                onClicked: bar.editor.putToBack()
            }
            BarTool {
                text: bar.item.isLocked ? qsTr("unlock") : qsTr("lock")
                hint: "L"
                iconName: bar.item.isLocked ? "lock-open" : "lock"
                onClicked: bar.editor.setLocked(!bar.item.isLocked)
            }
            BarTool {
                visible: !bar.item.isLocked
                text: qsTr("take down")
                hint: qsTr("Delete")
                iconName: "trash-2"
                onClicked: bar.editor.takeDown()
            }
        }
    }
}
