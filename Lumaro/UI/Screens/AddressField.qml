// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The address of a room: looked at first, and used once a room answers there.
Column {
    id: place

    required property HomeView home
    /// What the button says once a room has answered.
    required property string yes
    /// On a page of its own the keys go here at once.
    property bool takesKeys: false
    property alias text: field.text

    signal used

    function takeKeys(): void {
        field.takeKeys();
    }
    function goOn(): void {
        if (home.face.isAsking)
            return;
        if (!home.face.isGood)
            return home.check(field.text);
        home.useChecked();
        used();
    }

    width: parent ? parent.width : 0
    spacing: Theme.size.large

    Field {
        id: field

        width: parent.width
        focus: place.takesKeys
        label: qsTr("the address of your room")
        placeholder: "board.example"
        maximumLength: 200
        fault: place.home.face.isGood ? "" : place.home.face.found
        helper: place.home.face.isGood ? place.home.face.found : qsTr("whoever runs it can tell you.")
        onAccepted: place.goOn()
        onEdited: place.home.forgetCheck()
    }
    PaperButton {
        width: parent.width
        kind: PaperButton.Primary
        enabled: !place.home.face.isAsking
        text: {
            if (place.home.face.isAsking)
                return qsTr("just a moment…");
            return place.home.face.isGood ? place.yes : qsTr("look there");
        }
        onClicked: place.goOn()
    }
}
