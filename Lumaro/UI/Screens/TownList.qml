// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Towns one under the other, a few in sight. The model has the roles `name` and `country`.
ListView {
    id: list

    readonly property real rowHeight: Theme.size.control
    /// Enter takes the first one from where the keys are now.
    property bool isFirstOffered: false

    signal chosen(row: int)

    height: Math.min(count, 4) * rowHeight
    visible: count > 0
    activeFocusOnTab: true
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    Accessible.role: Accessible.List
    Accessible.name: qsTr("towns")

    delegate: Pressable {
        id: town

        required property int index
        required property string name
        required property string country
        readonly property TownList towns: ListView.view as TownList
        readonly property bool isOffered: index === 0 && towns !== null && towns.isFirstOffered

        text: qsTr("%1, %2", "lisbon, portugal").arg(town.name).arg(town.country)
        width: towns ? towns.width : 0
        height: towns ? towns.rowHeight : 0
        give: 1
        focusPolicy: Qt.NoFocus
        Accessible.role: Accessible.ListItem
        Accessible.selected: ListView.isCurrentItem
        onClicked: towns.chosen(index)

        Body {
            id: place

            anchors.left: parent.left
            anchors.leftMargin: Theme.size.medium
            anchors.verticalCenter: parent.verticalCenter
            anchors.verticalCenterOffset: 2 // lines are higher than their letters
            width: Math.min(implicitWidth, parent.width - land.width - 3 * Theme.size.medium)
            elide: Text.ElideRight
            wrapMode: Text.NoWrap
            text: town.name
            Accessible.ignored: true
        }
        Body {
            id: land

            anchors.right: parent.right
            anchors.rightMargin: Theme.size.medium
            anchors.baseline: place.baseline
            width: Math.min(implicitWidth, parent.width * 0.5)
            elide: Text.ElideRight
            wrapMode: Text.NoWrap
            isSmall: true
            isSoft: true
            text: town.country
            Accessible.ignored: true
        }

        background: Rectangle {
            radius: Theme.size.smallRadius
            color: town.hovered || town.activeFocus || town.isOffered ? Theme.color.raised : "transparent"
            border.width: town.activeFocus ? 2 : town.isOffered ? 1 : 0
            border.color: town.activeFocus ? Theme.color.accent : Theme.color.line
        }
    }
}
