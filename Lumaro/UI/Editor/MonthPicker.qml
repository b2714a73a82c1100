// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// A month to pick a day from. Arrows walk by days and weeks, PageUp and PageDown by months.
Column {
    id: month

    required property CountdownChoices choices

    signal accepted

    readonly property real cell: 36
    /// Each a `countdownDay`.
    readonly property var shown: choices.days

    spacing: Theme.size.tiny
    width: 7 * cell

    Item {
        width: parent.width
        height: Theme.size.control

        IconButton {
            text: qsTr("the month before")
            iconName: "chevron-left"
            onClicked: month.choices.turnPage(-1)
        }
        Title {
            anchors.centerIn: parent
            text: month.choices.month
            isSmall: true
        }
        IconButton {
            anchors.right: parent.right
            text: qsTr("the month after")
            iconName: "chevron-right"
            onClicked: month.choices.turnPage(1)
        }
    }
    Row {
        Repeater {
            model: month.choices.weekdays

            Body {
                required property string modelData

                width: month.cell
                horizontalAlignment: Text.AlignHCenter
                text: modelData
                isSmall: true
                isSoft: true
            }
        }
    }
    Grid {
        id: days

        readonly property countdownDay chosen: month.shown.find(day => day.isChosen) ?? month.shown[0]

        columns: 7
        activeFocusOnTab: true
        Accessible.role: Accessible.Table
        Accessible.focusable: true
        Accessible.name: chosen.isChosen ? chosen.name : month.choices.month
        Accessible.description: qsTr("arrows walk by days and weeks, page up and down by months")
        Keys.onPressed: event => {
            const steps = ({
                    [Qt.Key_Left]: -1,
                    [Qt.Key_Right]: 1,
                    [Qt.Key_Up]: -7,
                    [Qt.Key_Down]: 7
                });
            const pages = ({
                    [Qt.Key_PageUp]: -1,
                    [Qt.Key_PageDown]: 1
                });
            event.accepted = event.key in steps || event.key in pages;
            if (event.key in steps)
                month.choices.moveDay(steps[event.key]);
            else if (event.key in pages)
                month.choices.moveMonth(pages[event.key]);
        }
        Keys.onReturnPressed: month.accepted()
        Keys.onEnterPressed: month.accepted()

        Repeater {
            model: 42

            Item {
                id: cell

                required property int index
                readonly property countdownDay day: month.shown[index]

                width: month.cell
                height: 32
                Accessible.role: Accessible.Button
                Accessible.name: day.name
                Accessible.selected: day.isChosen
                Accessible.onPressAction: month.choices.pick(index)

                Rectangle {
                    anchors.centerIn: parent
                    width: 30
                    height: 30
                    radius: 15
                    color: cell.day.isChosen ? Theme.color.accent : pointer.containsMouse ? Theme.color.pressed : "transparent"
                    border.width: cell.day.isToday ? 2 : 0
                    border.color: Theme.color.accent

                    FocusRing {
                        anchors.margins: -2
                        isShown: days.activeFocus && cell.day.isChosen
                        around: 15
                    }
                }
                Text {
                    anchors.centerIn: parent
                    text: cell.day.number
                    textFormat: Text.PlainText
                    color: cell.day.isChosen ? Theme.color.onAccent : cell.day.isInMonth && !cell.day.isPast ? Theme.color.ink : Theme.color.softInk
                    opacity: cell.day.isInMonth || cell.day.isChosen ? 1 : 0.6
                    font.pixelSize: Theme.size.captionText + 1
                    font.weight: cell.day.isToday || cell.day.isChosen ? Font.Bold : Font.Normal
                }
                MouseArea {
                    id: pointer

                    anchors.fill: parent
                    hoverEnabled: true
                    onClicked: {
                        month.choices.pick(cell.index);
                        days.forceActiveFocus(Qt.MouseFocusReason);
                    }
                    onDoubleClicked: month.accepted()
                }
            }
        }
    }
}
