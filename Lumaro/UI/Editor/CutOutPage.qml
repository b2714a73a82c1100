// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Cuts a sticker out of a picture: a frame around what is wanted, then strokes where the edge is wrong.
Sheet {
    id: sheet

    required property CutOutSession session
    property int tool: 0 // 0 frames, 1 keeps, 2 drops

    title: qsTr("cut it out")
    paperWidth: Math.min(760, parent ? parent.width - 2 * Theme.size.large : 760)
    visible: session.isOpen
    onClosed: {
        if (session.isOpen) {
            session.close();
        }
    }

    Body {
        width: parent.width
        isSoft: true
        text: [qsTr("draw a frame around what you want to keep."), qsTr("paint over what belongs to it."), qsTr("paint over what should go.")][sheet.tool]
    }

    CutOutSheet {
        id: picture

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 380 * sheet.session.aspect)
        height: width / sheet.session.aspect
        session: sheet.session
        Accessible.role: Accessible.Graphic
        Accessible.name: qsTr("the picture to cut out of")

        MouseArea {
            property point start
            property list<real> places

            anchors.fill: parent
            cursorShape: Qt.CrossCursor
            preventStealing: true
            onPressed: mouse => {
                start = Qt.point(mouse.x / width, mouse.y / height);
                places = [start.x, start.y];
                rubber.visible = sheet.tool === 0;
                trail.visible = sheet.tool !== 0;
                trail.x = mouse.x - trail.width / 2;
                trail.y = mouse.y - trail.height / 2;
                rubber.width = 0;
            }
            onPositionChanged: mouse => {
                rubber.x = Math.min(start.x * width, mouse.x);
                rubber.y = Math.min(start.y * height, mouse.y);
                rubber.width = Math.abs(mouse.x - start.x * width);
                rubber.height = Math.abs(mouse.y - start.y * height);
                trail.x = mouse.x - trail.width / 2;
                trail.y = mouse.y - trail.height / 2;
                places.push(mouse.x / width, mouse.y / height);
            }
            onReleased: mouse => {
                rubber.visible = false;
                trail.visible = false;
                if (sheet.tool !== 0) {
                    sheet.session.scribble(places, 0.03, sheet.tool === 1);
                } else if (rubber.width > 8 && rubber.height > 8) {
                    sheet.session.frame(start.x, start.y, mouse.x / width, mouse.y / height);
                    sheet.tool = 1;
                }
            }
        }

        Rectangle {
            id: rubber

            visible: false
            color: "transparent"
            border.width: 2
            border.color: Theme.color.accent
            radius: 3
        }
        Rectangle {
            id: trail

            visible: false
            width: picture.width * 0.03
            height: width
            radius: width / 2
            color: sheet.tool === 1 ? Theme.color.here : Theme.color.accent
            opacity: 0.7
        }
    }

    Row {
        spacing: Theme.size.tiny

        Chip {
            text: qsTr("frame")
            iconName: "square-dashed"
            checkable: true
            checked: sheet.tool === 0
            onClicked: sheet.tool = 0
        }
        Chip {
            text: qsTr("keep")
            iconName: "plus"
            checkable: true
            checked: sheet.tool === 1
            onClicked: sheet.tool = 1
        }
        Chip {
            text: qsTr("drop")
            iconName: "minus"
            checkable: true
            checked: sheet.tool === 2
            onClicked: sheet.tool = 2
        }
    }
    PaperButton {
        anchors.right: parent.right
        kind: PaperButton.Primary
        iconName: "scissors"
        text: sheet.session.isWorking ? qsTr("looking for the edge…") : qsTr("stick it up")
        enabled: sheet.session.hasEdge && !sheet.session.isWorking
        onClicked: sheet.session.take()
    }
}
