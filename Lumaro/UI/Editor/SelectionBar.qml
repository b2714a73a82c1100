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
    readonly property bool isBlock: item.kind === "pomodoro"

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
            Body {
                visible: bar.item.comesDown !== ""
                height: Theme.size.control
                leftPadding: Theme.size.small
                rightPadding: Theme.size.tiny
                verticalAlignment: Text.AlignVCenter
                text: bar.item.comesDown
                wrapMode: Text.NoWrap
                color: Theme.color.softInk
                font.pixelSize: Theme.size.captionText
            }
            Word {
                visible: bar.item.canKeep && !bar.item.isKept && !bar.item.isLocked
                text: qsTr("keep it up")
                iconName: "heart"
                onClicked: bar.editor.setKept(true)
            }
            Tool {
                id: look

                visible: bar.item.kind === "note" && !bar.item.isLocked
                text: qsTr("paper and pin")
                iconName: "palette"
                onClicked: picker.openNear(look)

                LookPicker {
                    id: picker

                    paper: bar.item.paper
                    pin: bar.item.pin
                    onChosePaper: name => bar.editor.setPaper(name)
                    onChosePin: name => bar.editor.setPin(name)
                    onClosed: look.forceActiveFocus(Qt.PopupFocusReason)
                }
            }
            Tool {
                visible: bar.item.kind === "note"
                text: qsTr("read")
                hint: "V"
                iconName: "book-open"
                onClicked: bar.readWanted()
            }
            Tool {
                visible: bar.item.hasLinks
                text: qsTr("open a link")
                hint: "O"
                iconName: "link"
                onClicked: bar.linkWanted()
            }
            Tool {
                visible: bar.item.canEdit && !bar.item.isLocked
                text: qsTr("edit")
                hint: qsTr("Enter")
                iconName: "pencil"
                onClicked: bar.editWanted()
            }
            Tool {
                visible: bar.item.canOpen
                text: qsTr("see it large")
                hint: qsTr("Enter")
                iconName: "image"
                onClicked: bar.editWanted()
            }
            Tool {
                visible: bar.item.canCaption && !bar.item.isLocked
                text: qsTr("caption")
                hint: "C"
                iconName: "pencil"
                onClicked: bar.captionWanted()
            }
            Tool {
                visible: bar.item.canKeep && bar.item.isKept && !bar.item.isLocked
                checkable: true
                checked: true
                text: qsTr("let it go after a day")
                hint: "K"
                iconName: "pin"
                onClicked: bar.editor.setKept(false)
            }
            Tool {
                visible: bar.item.count === 1 && !bar.item.isLocked
                text: qsTr("a heart on it")
                hint: "H"
                iconName: "heart"
                onClicked: bar.editor.giveHeart()
            }
            Tool {
                visible: !bar.item.isLocked
                text: qsTr("to the front")
                hint: "F"
                iconName: "bring-to-front"
                onClicked: bar.editor.bringToFront()
            }
            Tool {
                visible: !bar.item.isLocked
                text: qsTr("to the back")
                hint: "B"
                iconName: "send-to-back"
                onClicked: bar.editor.putToBack()
            }
            Tool {
                text: bar.item.isLocked ? qsTr("unlock") : qsTr("lock")
                hint: "L"
                iconName: bar.item.isLocked ? "lock-open" : "lock"
                onClicked: bar.editor.setLocked(!bar.item.isLocked)
            }
            Tool {
                visible: !bar.item.isLocked
                text: qsTr("take down")
                hint: qsTr("Delete")
                iconName: "trash-2"
                onClicked: bar.editor.takeDown()
            }
        }
    }
}
