// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Lumaro.UI

/// What mends a card on which something is missing.
Row {
    id: tools

    required property EditorView editor
    required property MusicView music
    required property PlaceView place
    /// What might be asked of the partner.
    required property string question
    readonly property selectedItem item: editor.selected
    readonly property bool areHoursOffered: item.kind === "timezones" && !place.areHoursKnown

    signal editWanted
    /// One's own music is to be shared, or no longer.
    signal sharingWanted
    /// The same of one's hours.
    signal hoursWanted

    visible: item.isOwnMusic || item.kind === "location" || areHoursOffered || question !== ""
    spacing: 2

    BarWord {
        visible: tools.item.isOwnMusic
        checkable: tools.music.isDecided
        checked: tools.music.isShared
        text: qsTr("share what i'm listening to")
        Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
        onClicked: tools.sharingWanted()
    }
    BarWord {
        visible: tools.item.kind === "location"
        text: tools.item.isOwnPlace ? tools.place.offer : qsTr("where they are")
        iconName: "house"
        onClicked: tools.editWanted()
    }
    BarWord {
        visible: tools.areHoursOffered
        text: qsTr("let them see your hours")
        iconName: "clock"
        onClicked: tools.hoursWanted()
    }
    BarWord {
        visible: tools.question !== ""
        text: qsTr("ask them")
        onClicked: tools.place.askThem(tools.question)
    }
}
