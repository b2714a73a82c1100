// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem

/// A sheet of paper that is taped over everything else in the window, with its content in a column. The keys stay on it;
/// Esc takes it off, unless people must answer it.
T.Popup {
    id: sheet

    default property alias content: column.data
    property string title
    property bool isDismissable: true
    property real paperWidth: 520

    /// Where the keys were before the sheet came, and go again after it.
    property Item cameFrom: null

    /// What the keys went to last on the sheet, and whether it is still to be seen.
    property Item keyed: null
    readonly property bool isKeyedSeen: keyed?.visible ?? true

    function holds(item: Item): bool {
        while (item !== null && item !== column)
            item = item.parent;
        return item !== null;
    }
    /// An answer took away what had the keys: they go to what comes next.
    function keepKeys(): void {
        if (opened && keyed !== null && !isSeen(column.Window.activeFocusItem))
            keyed.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason);
    }
    function isSeen(item: Item): bool {
        return item !== null && item.visible && (item.activeFocusOnTab || holds(item));
    }

    onIsKeyedSeenChanged: if (!isKeyedSeen) settled.start()
    onAboutToShow: cameFrom = parent ? parent.Window.activeFocusItem : null
    onClosed: if (cameFrom) cameFrom.forceActiveFocus(Qt.PopupFocusReason)
    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    width: parent ? Math.min(paperWidth, parent.width - 2 * Theme.size.large) : paperWidth
    height: parent ? Math.min(flick.contentHeight + 2 * verticalPadding, parent.height - 2 * Theme.size.medium) : 0
    horizontalPadding: Theme.size.huge
    verticalPadding: 1
    modal: true
    focus: true
    closePolicy: isDismissable ? T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside : T.Popup.NoAutoClose

    T.Overlay.modal: Shade {}

    enter: Transition {
        NumberAnimation {
            property: "scale"
            from: Theme.isMotionReduced ? 1 : 0.92
            to: 1
            duration: Theme.isMotionReduced ? 0 : Theme.motion.land
            easing.type: Easing.OutBack
            easing.overshoot: Theme.motion.overshoot
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

    background: Rectangle {
        radius: Theme.size.largeRadius
        color: Theme.color.surface
        border.width: 1
        border.color: Theme.color.edge

        Shadow {
            radius: Theme.size.largeRadius
            lift: 22
        }
        Tape {
            anchors.horizontalCenter: parent.horizontalCenter
            y: -11
        }
    }

    Flickable {
        id: flick

        // What the keys go to is brought into view.
        readonly property Item focused: T.Overlay.overlay && sheet.opened ? Window.activeFocusItem : null

        // Keys that nothing on a long sheet takes move it.
        function scroll(key: int): bool {
            const steps = new Map([[Qt.Key_Down, 60], [Qt.Key_Up, -60], [Qt.Key_PageDown, 0.9 * height], [Qt.Key_PageUp, -0.9 * height], [Qt.Key_Home, -contentHeight], [Qt.Key_End, contentHeight]]);
            if (!interactive || !steps.has(key))
                return false;
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + steps.get(key)));
            return true;
        }

        Keys.onPressed: event => event.accepted = scroll(event.key)
        onHeightChanged: returnToBounds()
        onFocusedChanged: {
            if (sheet.holds(focused))
                sheet.keyed = focused;
            if (!interactive || !focused || !column.contains(column.mapFromItem(focused, 0, 0)))
                return;
            const top = column.mapFromItem(focused, 0, 0).y;
            const room = Theme.size.medium;
            // Of something higher than the sheet, its beginning.
            const isWhole = focused.height + 2 * room <= height;
            const end = top + (isWhole ? focused.height + room : height / 2);
            contentY = Math.max(Math.min(contentY, top - room), end - height, 0);
        }
        anchors.fill: parent
        contentWidth: width
        contentHeight: column.implicitHeight
        interactive: contentHeight > height + 1
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title

        // An answer may move the keys itself.
        Timer {
            id: settled

            interval: 0
            onTriggered: sheet.keepKeys()
        }

        Column {
            id: column

            width: parent.width
            topPadding: Theme.size.huge
            bottomPadding: Theme.size.huge
            spacing: Theme.size.large

            Item {
                visible: sheet.title !== ""
                width: parent.width
                height: Math.max(Theme.size.control, title.implicitHeight)

                HandText {
                    id: title

                    anchors.verticalCenter: parent.verticalCenter
                    width: parent.width - (sheet.isDismissable ? Theme.size.control : 0)
                    text: sheet.title
                    isLarge: true
                    font.pixelSize: 38
                }
                IconButton {
                    anchors.right: parent.right
                    anchors.rightMargin: -10
                    visible: sheet.isDismissable
                    iconName: "x"
                    text: qsTr("close")
                    isTipBelow: true
                    onClicked: sheet.close()
                }
            }
        }
    }

    Rectangle { // there is more below
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        visible: flick.interactive && !flick.atYEnd
        height: Theme.size.huge + Theme.size.large
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Qt.rgba(Theme.color.surface.r, Theme.color.surface.g, Theme.color.surface.b, 0)
            }
            GradientStop {
                position: 0.8
                color: Theme.color.surface
            }
        }
    }
}
