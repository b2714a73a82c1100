// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// A small slip at the top of the window: who is here, and whether anything waits. It is shown while this computer is on a board.
Rectangle {
    id: slip

    required property AppView view
    readonly property string text: view.face.greeting !== "" ? view.face.greeting : view.face.status
    readonly property color dotColor: {
        if (view.face.isOffline)
            return Theme.color.accent;
        return view.face.isPartnerHere ? Theme.color.here : Theme.color.away;
    }

    visible: view.face.isOnBoard
    width: row.implicitWidth + 2 * Theme.size.medium
    height: 32
    radius: height / 2
    color: Theme.color.surface
    border.width: 1
    border.color: Theme.color.edge
    opacity: 0.94
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Shadow {
        radius: 16
        lift: 4
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.size.small

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 8
            height: 8
            radius: 4
            color: slip.dotColor
        }
        Text {
            text: slip.text
            textFormat: Text.PlainText
            color: Theme.color.softInk
            font.pixelSize: Theme.size.captionText
            font.weight: Font.DemiBold
        }
    }
}
