// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// "i'm in …": a town by typing the beginning of its name. Enter takes the first one, the arrows go into the list.
FocusScope {
    id: picker

    required property PlaceView place

    /// A town was chosen, and is known to the application.
    signal chosen
    /// The person wants none.
    signal cancelled

    /// Empty, and ready to be typed into.
    function takeKeys(): void {
        field.text = "";
        field.forceActiveFocus(Qt.TabFocusReason);
    }
    function choose(row: int): void {
        if (row < 0 || row >= towns.count)
            return;
        place.choose(row);
        field.text = "";
        chosen();
    }

    implicitHeight: column.implicitHeight
    Keys.onEscapePressed: cancelled()
    Keys.onUpPressed: field.forceActiveFocus(Qt.BacktabFocusReason)

    Column {
        id: column

        width: parent.width
        spacing: Theme.size.small

        Field {
            id: field

            width: parent.width
            focus: true
            label: qsTr("i'm in …")
            placeholder: qsTr("the first letters of a town")
            maximumLength: 60
            onTextChanged: picker.place.choices.typed = text
            onAccepted: picker.choose(0)
            Keys.onDownPressed: {
                if (towns.count > 0) {
                    towns.currentIndex = 0;
                    towns.forceActiveFocus(Qt.TabFocusReason);
                    towns.currentItem.forceActiveFocus(Qt.TabFocusReason);
                }
            }
        }
        TownList {
            id: towns

            width: parent.width
            model: picker.place.choices
            isFirstOffered: field.activeFocus
            onChosen: row => picker.choose(row)
            // Who types on means the field.
            Keys.onPressed: event => {
                const isText = (event.text > " " && event.key !== Qt.Key_Delete) || event.key === Qt.Key_Backspace;
                if (!isText || (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier)))
                    return;
                event.accepted = true;
                field.forceActiveFocus(Qt.BacktabFocusReason);
                field.text = event.key === Qt.Key_Backspace ? field.text.slice(0, -1) : field.text + event.text;
            }
        }
        Body {
            visible: picker.place.choices.isNothingFound
            width: parent.width
            isSmall: true
            isSoft: true
            text: qsTr("no town here begins like that. perhaps a larger one close by?")
            Accessible.role: Accessible.AlertMessage
        }
    }
}
