// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem
import Lumaro.UI

/// A photo over everything else, as a print with its caption; or a sticker, as it is. Arrows walk on, a click beside it or
/// Esc goes back to the board.
T.Popup {
    id: page

    required property PictureExchange pictures
    readonly property LargeView view: pictures.large

    signal captionWanted

    parent: T.Overlay.overlay
    width: parent ? parent.width : 0
    height: parent ? parent.height : 0
    visible: view.isOpen
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    onClosed: view.close()

    // Deeper than behind a sheet: the picture is all there is to see.
    T.Overlay.modal: Shade {
        strength: Theme.isDark ? 1.3 : 1.7
    }

    enter: Transition {
        NumberAnimation {
            property: "scale"
            from: Theme.isMotionReduced ? 1 : 0.94
            to: 1
            duration: Theme.isMotionReduced ? 0 : Theme.motion.land
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.motion.quick
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: Theme.motion.quick
        }
    }

    FocusScope {
        id: room

        anchors.fill: parent
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: page.spoken

        // Those of the page, from wherever on it the keys are.
        Keys.onPressed: event => event.accepted = page.key(event.key, event.modifiers)

        MouseArea {
            anchors.fill: parent
            onClicked: page.close()
        }

        Item {
            id: sight

            readonly property real white: page.view.isPhoto ? 14 : 0
            readonly property real foot: !page.view.isPhoto ? 0 : page.view.caption === "" ? white : 76
            readonly property real roomWidth: room.width - 2 * (Theme.size.huge + Theme.size.control) - 2 * white
            readonly property real roomHeight: tools.y - 2 * Theme.size.large - Theme.size.medium - white - foot
            readonly property real printWidth: Math.max(1, Math.min(roomWidth, roomHeight * page.view.aspect))

            activeFocusOnTab: true
            focus: true
            width: printWidth + 2 * white
            height: printWidth / page.view.aspect + white + foot
            x: Math.round((room.width - width) / 2)
            y: Math.round((tools.y - height) / 2)
            Accessible.role: Accessible.Graphic
            Accessible.focusable: true
            Accessible.name: page.spoken
            Accessible.description: page.view.count > 1 ? qsTr("left and right go to the others") : ""

            Rectangle {
                id: paper

                anchors.fill: parent
                visible: page.view.isPhoto
                radius: 3
                color: "#FFFBF3"

                Shadow {
                    radius: 3
                    lift: 20
                }
            }
            // Clicks on the print stay there.
            MouseArea {
                anchors.fill: parent
            }
            Rectangle {
                anchors.fill: picture
                visible: page.view.missing !== ""
                color: "#EADFCF"
                radius: 2

                Body {
                    anchors.centerIn: parent
                    width: Math.min(implicitWidth, parent.width - 2 * Theme.size.large)
                    horizontalAlignment: Text.AlignHCenter
                    color: "#5B4B3C"
                    text: page.view.missing
                }
            }
            LargePrint {
                id: picture

                x: sight.white
                y: sight.white
                width: sight.printWidth
                height: sight.printWidth / page.view.aspect
                view: page.view
            }
            HandText {
                id: caption

                anchors.bottom: parent.bottom
                x: sight.white
                width: sight.printWidth
                height: sight.foot
                visible: text !== ""
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                wrapMode: Text.Wrap
                maximumLineCount: 2
                fontSizeMode: Text.Fit
                minimumPixelSize: 15
                elide: Text.ElideRight
                color: "#3B322B"
                font.pixelSize: 30
                text: page.view.caption
            }
        }

        LargeTools {
            id: tools

            anchors.horizontalCenter: parent.horizontalCenter
            y: parent.height - height - Theme.size.large
            view: page.view
            onCaptionWanted: page.captionWanted()
            onCopyWanted: page.copy()
            onCloseWanted: page.close()
        }

        Rectangle { // what came of it
            anchors.horizontalCenter: parent.horizontalCenter
            y: tools.y - height - Theme.size.small
            visible: page.view.said !== ""
            width: said.width + 2 * Theme.size.large
            height: said.height + Theme.size.medium
            radius: Theme.size.radius
            color: Theme.color.raised
            Accessible.role: Accessible.AlertMessage
            Accessible.name: page.view.said

            Body {
                id: said

                anchors.centerIn: parent
                width: Math.min(implicitWidth, room.width - 4 * Theme.size.large)
                text: page.view.said
                Accessible.ignored: true
            }
        }
    }

    readonly property string spoken: {
        const what = view.isPhoto ? qsTr("photo, large") : qsTr("sticker, large");
        return view.caption === "" ? what : what + ", '" + view.caption + "'";
    }

    function copy(): void {
        pictures.copy();
        view.say(qsTr("copied"));
    }

    function key(key: int, modifiers: int): bool {
        if (modifiers & (Qt.ControlModifier | Qt.MetaModifier)) {
            if (key === Qt.Key_C)
                copy();
            else if (key === Qt.Key_S)
                view.save();
            return key === Qt.Key_C || key === Qt.Key_S;
        }
        switch (key) {
        case Qt.Key_Left:
        case Qt.Key_Up:
        case Qt.Key_PageUp:
            view.step(-1);
            return true;
        case Qt.Key_Right:
        case Qt.Key_Down:
        case Qt.Key_PageDown:
            view.step(1);
            return true;
        case Qt.Key_Home:
            view.step(-view.count);
            return true;
        case Qt.Key_End:
            view.step(view.count);
            return true;
        case Qt.Key_C:
            if (view.isPhoto)
                captionWanted();
            return true;
        }
        return false;
    }
}
