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

    component Towns: ListView {
        readonly property real rowHeight: Theme.size.control
        /// Enter in the field takes the first one.
        property bool isFirstOffered: false

        signal chosen(row: int)
    }

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
        Towns {
            id: towns

            width: parent.width
            height: Math.min(count, 5) * rowHeight
            visible: count > 0
            activeFocusOnTab: true
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            model: picker.place.choices
            isFirstOffered: field.activeFocus
            onChosen: row => picker.choose(row)
            Accessible.role: Accessible.List
            Accessible.name: qsTr("towns")
            // Who types on means the field.
            Keys.onPressed: event => {
                const isText = event.text > " " || event.key === Qt.Key_Backspace;
                if (!isText || (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier)))
                    return;
                event.accepted = true;
                field.forceActiveFocus(Qt.BacktabFocusReason);
                field.text = event.key === Qt.Key_Backspace ? field.text.slice(0, -1) : field.text + event.text;
            }

            delegate: Pressable {
                id: town

                required property int index
                required property string name
                required property string country
                readonly property Towns towns: ListView.view as Towns

                text: qsTr("%1, %2", "lisbon, portugal").arg(town.name).arg(town.country)
                width: towns?.width ?? 0
                height: towns?.rowHeight ?? 0
                give: 1
                focusPolicy: Qt.NoFocus
                Accessible.role: Accessible.ListItem
                Accessible.selected: ListView.isCurrentItem
                onClicked: towns.chosen(index)

                Body {
                    id: name

                    anchors.left: parent.left
                    anchors.leftMargin: Theme.size.medium
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, parent.width - country.width - 3 * Theme.size.medium)
                    elide: Text.ElideRight
                    wrapMode: Text.NoWrap
                    text: town.name
                    Accessible.ignored: true
                }
                Body {
                    id: country

                    anchors.right: parent.right
                    anchors.rightMargin: Theme.size.medium
                    anchors.baseline: name.baseline
                    width: Math.min(implicitWidth, parent.width * 0.5)
                    elide: Text.ElideRight
                    wrapMode: Text.NoWrap
                    isSmall: true
                    isSoft: true
                    text: town.country
                    Accessible.ignored: true
                }

                background: Rectangle {
                    readonly property bool isOffered: town.index === 0 && (town.towns?.isFirstOffered ?? false)

                    radius: Theme.size.smallRadius
                    color: town.hovered || town.activeFocus || isOffered ? Theme.color.raised : "transparent"
                    border.width: town.activeFocus ? 2 : 0
                    border.color: Theme.color.accent
                }
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
