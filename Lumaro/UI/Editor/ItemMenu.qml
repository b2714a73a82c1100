// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem
import Lumaro.UI

/// Everything that can be done to what is selected.
T.Menu {
    id: menu

    required property EditorHands hands
    required property MusicView music
    required property PlaceView place
    readonly property EditorView editor: hands.editor
    readonly property selectedItem item: editor.selected

    implicitWidth: {
        let widest = 220;
        for (let i = 0; i < count; ++i) {
            const entry = itemAt(i) as MenuEntry;
            if (entry?.visible)
                widest = Math.max(widest, entry.implicitWidth + leftPadding + rightPadding);
        }
        return widest;
    }
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: Theme.size.tiny
    margins: Theme.size.small

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: false
        currentIndex: menu.currentIndex
    }

    background: Rectangle {
        radius: Theme.size.radius
        color: Theme.color.raised
        border.width: 1
        border.color: Theme.color.edge

        Shadow {
            radius: Theme.size.radius
            lift: 8
        }
    }

    MenuEntry {
        visible: menu.item.canEdit && !menu.item.isLocked
        text: qsTr("edit")
        hint: qsTr("Enter")
        onTriggered: menu.hands.editWanted()
    }
    MenuEntry {
        visible: menu.item.canOpen
        text: qsTr("see it large")
        hint: qsTr("Enter")
        onTriggered: menu.hands.editWanted()
    }
    MenuEntry {
        visible: menu.item.canCaption && !menu.item.isLocked
        text: qsTr("caption")
        hint: "C"
        onTriggered: menu.hands.captionWanted()
    }
    MenuEntry {
        visible: menu.item.kind === "note"
        text: qsTr("read")
        hint: "V"
        onTriggered: menu.hands.readWanted()
    }
    MenuEntry {
        visible: menu.item.hasLinks
        text: qsTr("open a link")
        hint: "O"
        onTriggered: menu.hands.linkWanted()
    }
    MenuEntry {
        visible: menu.item.canKeep && !menu.item.isLocked
        text: menu.item.isKept ? qsTr("let it go after a day") : qsTr("keep it up")
        hint: "K"
        onTriggered: menu.editor.setKept(!menu.item.isKept)
    }
    MenuEntry {
        visible: menu.item.canDrawOn && !menu.item.isLocked
        text: qsTr("draw on it")
        hint: "D"
        onTriggered: menu.hands.doodleWanted()
    }
    MenuEntry {
        visible: menu.item.count === 1 && !menu.item.isLocked
        text: qsTr("a heart on it")
        hint: "H"
        onTriggered: menu.editor.giveHeart()
    }
    MenuEntry {
        visible: !menu.item.isLocked
        text: qsTr("to the front")
        hint: "F"
        onTriggered: menu.editor.bringToFront()
    }
    MenuEntry {
        visible: !menu.item.isLocked
        text: qsTr("to the back")
        hint: "B"
        onTriggered: menu.editor.putToBack()
    }
    MenuEntry {
        text: menu.item.isLocked ? qsTr("unlock") : qsTr("lock")
        hint: "L"
        onTriggered: menu.editor.setLocked(!menu.item.isLocked)
    }
    MenuEntry {
        visible: menu.item.count === 1
        text: qsTr("copy")
        hint: qsTr("Ctrl C")
        onTriggered: menu.hands.pictures.copy()
    }
    MenuEntry {
        text: qsTr("once more")
        hint: qsTr("Ctrl D")
        onTriggered: menu.editor.duplicate()
    }
    MenuEntry {
        visible: menu.item.canJoin
        text: qsTr("join")
        onTriggered: menu.editor.joinBlock()
    }
    MenuEntry {
        visible: menu.item.canStart
        text: menu.item.minutes === 1 ? qsTr("start 1 minute") : qsTr("start %n minutes", "", menu.item.minutes)
        onTriggered: menu.editor.startBlock(menu.item.minutes)
    }
    MenuEntry {
        visible: menu.item.canCoolDown
        text: qsTr("cool down")
        onTriggered: menu.editor.coolDown()
    }
    MenuEntry {
        visible: menu.item.canRest
        text: qsTr("rest")
        onTriggered: menu.editor.rest()
    }
    MenuEntry {
        visible: menu.item.isOwnMusic
        text: menu.music.isShared ? qsTr("keep what i'm listening to to myself") : qsTr("share what i'm listening to")
        onTriggered: menu.hands.sharingWanted()
    }
    MenuEntry {
        visible: menu.item.kind === "timezones" && !menu.place.areHoursKnown
        text: qsTr("let them see your hours")
        onTriggered: menu.hands.hoursWanted()
    }
    MenuEntry {
        visible: menu.item.kind === "location"
        text: menu.item.isOwnPlace ? menu.place.offer : qsTr("where they are")
        hint: qsTr("Enter")
        onTriggered: menu.hands.editWanted()
    }
    MenuEntry {
        visible: !menu.item.isLocked
        text: qsTr("take down")
        hint: qsTr("Delete")
        onTriggered: menu.editor.takeDown()
    }
    MenuEntry {
        text: qsTr("keys and gestures")
        hint: "?"
        onTriggered: menu.hands.helpWanted()
    }
}
