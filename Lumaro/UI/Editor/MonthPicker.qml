// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// A month to pick a day from. Arrows walk by days and weeks, PageUp and PageDown by months.
Column {
    id: month

    required property CountdownChoices choices

    signal accepted

    spacing: Theme.size.tiny
    width: days.width

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
    DayGrid {
        id: days

        choices: month.choices
        onAccepted: month.accepted()
    }
}
