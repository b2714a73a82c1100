// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The six weeks of a month under the names of their days. The keys walk the chosen day, and it is named for those who do
/// not see it.
Grid {
    id: days

    required property CountdownChoices choices
    /// Each a `countdownDay`.
    readonly property var shown: choices.days
    readonly property countdownDay chosen: shown.find(day => day.isChosen) ?? shown[0]
    readonly property real cell: 36

    signal accepted

    columns: 7
    activeFocusOnTab: true
    Accessible.role: Accessible.Table
    Accessible.focusable: true
    Accessible.name: chosen.isChosen ? chosen.name : choices.month
    Accessible.description: qsTr("arrows walk by days and weeks, page up and down by months")
    Keys.onPressed: event => {
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Left:
            return days.choices.moveDay(-1);
        case Qt.Key_Right:
            return days.choices.moveDay(1);
        case Qt.Key_Up:
            return days.choices.moveDay(-7);
        case Qt.Key_Down:
            return days.choices.moveDay(7);
        case Qt.Key_PageUp:
            return days.choices.moveMonth(-1);
        case Qt.Key_PageDown:
            return days.choices.moveMonth(1);
        case Qt.Key_Return:
        case Qt.Key_Enter:
            return days.accepted();
        }
        event.accepted = false;
    }

    Repeater {
        model: days.choices.weekdays

        Body {
            required property string modelData
            readonly property DayGrid owner: parent as DayGrid

            width: owner?.cell ?? 0
            horizontalAlignment: Text.AlignHCenter
            bottomPadding: Theme.size.tiny
            text: modelData
            isSmall: true
            isSoft: true
        }
    }
    Repeater {
        model: 42

        Item {
            id: cell

            required property int index
            readonly property DayGrid owner: parent as DayGrid
            // A cell is there before its grid is, and after it.
            property countdownDay day

            Binding on day {
                when: cell.owner !== null
                value: cell.owner?.shown[cell.index]
            }

            width: owner?.cell ?? 0
            height: 32
            Accessible.role: Accessible.Button
            Accessible.name: day.name
            Accessible.selected: day.isChosen
            Accessible.onPressAction: owner.choices.pick(index)

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
                    isShown: cell.day.isChosen && (cell.owner?.activeFocus ?? false)
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
                    cell.owner.choices.pick(cell.index);
                    cell.owner.forceActiveFocus(Qt.MouseFocusReason);
                }
                onDoubleClicked: cell.owner.accepted()
            }
        }
    }
}
