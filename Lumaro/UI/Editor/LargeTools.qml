// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Under a picture that is seen large: the way to the others, and what can be done with it.
Rectangle {
    id: tools

    required property LargeView view

    signal captionWanted
    signal copyWanted
    signal closeWanted

    width: row.width + 2 * Theme.size.tiny
    height: row.height + 2 * Theme.size.tiny
    radius: Theme.size.radius
    color: Theme.color.raised
    border.width: 1
    border.color: Theme.color.edge

    // Clicks between the buttons do not close the picture.
    MouseArea {
        anchors.fill: parent
    }
    Row {
        id: row

        anchors.centerIn: parent
        spacing: 2

        IconButton {
            visible: tools.view.count > 1
            enabled: tools.view.number > 1
            iconName: "chevron-left"
            text: qsTr("the one before")
            hint: "←"
            onClicked: tools.view.step(-1)
        }
        Body {
            visible: tools.view.count > 1
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("%1 of %2").arg(tools.view.number).arg(tools.view.count)
            isSmall: true
            isSoft: true
        }
        IconButton {
            visible: tools.view.count > 1
            enabled: tools.view.number < tools.view.count
            iconName: "chevron-right"
            text: qsTr("the next one")
            hint: "→"
            onClicked: tools.view.step(1)
        }
        IconButton {
            visible: tools.view.isPhoto
            iconName: "pencil"
            text: qsTr("caption")
            hint: "C"
            onClicked: tools.captionWanted()
        }
        IconButton {
            iconName: "copy"
            text: qsTr("copy")
            hint: qsTr("Ctrl C")
            onClicked: tools.copyWanted()
        }
        IconButton {
            iconName: "download"
            text: qsTr("save as")
            hint: qsTr("Ctrl S")
            onClicked: tools.view.save()
        }
        IconButton {
            iconName: "x"
            text: qsTr("close")
            hint: qsTr("Esc")
            onClicked: tools.closeWanted()
        }
    }
}
