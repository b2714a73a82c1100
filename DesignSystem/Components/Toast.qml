// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A slip of paper that springs in from the bottom of what it is put into, says something, and leaves by itself.
Item {
    id: toast

    property string text
    property string actionText
    /// How long it stays, in milliseconds, once nobody points at it.
    property int lasts: 5000
    property bool isShown: false

    signal acted

    function show(what: string, action: string): void {
        text = what;
        actionText = action;
        // What comes into sight is read anyway.
        const isInSight = slip.visible;
        isShown = true;
        if (isInSight)
            ScreenReader.say(slip);
        leaving.restart();
    }

    anchors.horizontalCenter: parent.horizontalCenter
    anchors.bottom: parent.bottom
    z: 100
    width: slip.width
    height: slip.height + Theme.size.large

    Rectangle {
        id: slip

        visible: toast.isShown || moving.running || opacity > 0
        width: Math.min(row.implicitWidth + 2 * Theme.size.large, toast.parent.width - 2 * Theme.size.large)
        height: Math.max(52, label.implicitHeight + 2 * Theme.size.medium)
        y: toast.isShown || Theme.isMotionReduced ? 0 : toast.height + Theme.size.huge
        opacity: toast.isShown ? 1 : 0
        radius: Theme.size.radius
        color: Theme.color.raised
        border.width: 1
        border.color: Theme.color.edge
        Accessible.role: Accessible.Notification
        Accessible.name: toast.text

        Shadow {
            lift: 8
        }
        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.size.small

            Body {
                id: label

                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, toast.parent.width - 4 * Theme.size.large - (action.visible ? action.width : 0))
                text: toast.text
                lineHeight: 1
                Accessible.ignored: true
            }
            PaperButton {
                id: action

                objectName: "action"
                visible: toast.actionText !== "" && toast.isShown
                kind: PaperButton.Quiet
                text: toast.actionText
                onClicked: {
                    toast.isShown = false;
                    toast.acted();
                }
            }
        }
        HoverHandler {
            id: pointer
        }
        Behavior on y {
            enabled: !Theme.isMotionReduced

            SpringAnimation {
                id: moving

                spring: Theme.motion.spring
                damping: Theme.motion.damping
                epsilon: 0.3
            }
        }
        Behavior on opacity {
            NumberAnimation {
                duration: Theme.motion.quick
            }
        }
    }
    Timer {
        id: leaving

        interval: toast.lasts
        running: toast.isShown && !pointer.hovered && !action.activeFocus
        onTriggered: toast.isShown = false
    }
}
