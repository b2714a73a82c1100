// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets
import Lumaro.UI

/// Takes what other programs let fall on the board. While something is over it that it can take, light comes in around
/// the board, with a word of what will hang there.
DropArea {
    id: drop

    required property BoardView board
    required property EditorView editor
    required property PictureExchange pictures
    /// Of what is over the board, as `DropOffer` has it.
    property string kind
    property int files: 0

    function place(x: real, y: real): point {
        return board.canvas.canvasPoint(Qt.point(x, y));
    }

    onEntered: drag => {
        kind = DropOffer.kindOf(drag.formats, drag.urls, drag.hasText);
        files = drag.urls.length;
        drag.accepted = kind !== "";
    }
    onExited: kind = ""
    onDropped: drop => {
        const where = place(drop.x, drop.y);
        switch (kind) {
        case "picture":
            pictures.dropPicture(drop.getDataAsArrayBuffer(pictures.pictureFormat(drop.formats)), where);
            break;
        case "files":
            pictures.drop(drop.urls, where);
            break;
        case "text":
            editor.putUpTextAt(drop.text, where);
            break;
        }
        kind = "";
    }

    Item {
        id: light

        anchors.fill: parent
        opacity: drop.kind === "" ? 0 : 1
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.motion.quick
            }
        }

        // Light along the edges, like a lamp behind the paper.
        component Ray: Rectangle {
            id: ray

            required property int orientation
            required property bool isTurned
            readonly property color warm: "#f2a94b"

            gradient: Gradient {
                orientation: ray.orientation
                GradientStop {
                    position: ray.isTurned ? 1 : 0
                    color: Qt.rgba(ray.warm.r, ray.warm.g, ray.warm.b, 0.55)
                }
                GradientStop {
                    position: 0.4
                    color: Qt.rgba(ray.warm.r, ray.warm.g, ray.warm.b, ray.isTurned ? 0.07 : 0.18)
                }
                GradientStop {
                    position: ray.isTurned ? 0 : 1
                    color: Qt.rgba(ray.warm.r, ray.warm.g, ray.warm.b, 0)
                }
            }
        }

        Ray {
            orientation: Gradient.Vertical
            isTurned: false
            width: parent.width
            height: 56
        }
        Ray {
            orientation: Gradient.Vertical
            isTurned: true
            anchors.bottom: parent.bottom
            width: parent.width
            height: 56
        }
        Ray {
            orientation: Gradient.Horizontal
            isTurned: false
            width: 56
            height: parent.height
        }
        Ray {
            orientation: Gradient.Horizontal
            isTurned: true
            anchors.right: parent.right
            width: 56
            height: parent.height
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: 3
            radius: Theme.size.radius
            color: "transparent"
            border.width: 2
            border.color: Theme.color.accent
            opacity: 0.6
        }

        Rectangle {
            id: slip

            anchors.horizontalCenter: parent.horizontalCenter
            // Under the status line.
            y: Theme.size.medium + 32 + Theme.size.medium
            width: Math.min(words.implicitWidth + 2 * Theme.size.large, parent.width - 2 * Theme.size.large)
            height: words.implicitHeight + 2 * Theme.size.small
            radius: Theme.size.radius
            color: Theme.color.raised
            border.width: 1
            border.color: Theme.color.edge
            Accessible.role: Accessible.AlertMessage
            Accessible.name: words.text

            Shadow {
                radius: slip.radius
                lift: 8
            }
            HandText {
                id: words

                anchors.centerIn: parent
                width: parent.width - 2 * Theme.size.large
                horizontalAlignment: Text.AlignHCenter
                Accessible.ignored: true
                text: {
                    if (drop.kind === "text")
                        return qsTr("let go: the words become a note");
                    return drop.files > 1 ? qsTr("let go: the pictures hang here") : qsTr("let go: the picture hangs here");
                }
            }
        }
    }
}
