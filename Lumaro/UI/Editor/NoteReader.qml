// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem
import Widgets
import Lumaro.UI

/// The selected note, large over the board, to be read from its first line to its last. Esc lays it back.
T.Popup {
    id: reader

    required property EditorView editor
    readonly property real side: parent ? Math.min(parent.width, parent.height) - 2 * Theme.size.huge : 0

    /// A link in it was clicked.
    signal linkWanted(link: string)

    function read(): void {
        reading.fill();
        open();
        text.forceActiveFocus(Qt.PopupFocusReason);
    }
    function scrollBy(way: real): void {
        flick.contentY = Math.max(0, Math.min(flick.contentHeight - flick.height, flick.contentY + way));
    }

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    width: Math.min(side, 640)
    height: Math.min(side, Math.max(300, text.implicitHeight + 2 * Theme.size.huge + tools.height + Theme.size.medium))
    padding: 0
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    T.Overlay.modal: Shade {}

    enter: Transition {
        NumberAnimation {
            property: "scale"
            from: Theme.isMotionReduced ? 1 : 0.8
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

    NoteReading {
        id: reading

        editor: reader.editor
        document: text.textDocument
        width: flick.width
        dark: Theme.isDark
    }

    background: Item {
        Shadow {
            anchors.fill: parent
            radius: 4
            lift: 26
        }
        NoteSwatch {
            anchors.fill: parent
            paper: reader.editor.selected.paper
            dark: Theme.isDark
            isWhole: true
        }
    }

    Flickable {
        id: flick

        anchors.fill: parent
        anchors.margins: Theme.size.huge
        anchors.bottomMargin: tools.height + Theme.size.large
        contentWidth: width
        contentHeight: text.implicitHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        TextEdit {
            id: text

            width: flick.width
            readOnly: true
            selectByMouse: true
            activeFocusOnTab: true
            textFormat: TextEdit.RichText
            wrapMode: TextEdit.Wrap
            color: reading.ink
            selectionColor: Theme.color.accent
            selectedTextColor: Theme.color.onAccent
            Accessible.role: Accessible.StaticText
            Accessible.name: reading.spoken
            onLinkActivated: link => reader.linkWanted(link)
            Keys.onTabPressed: edit.forceActiveFocus(Qt.TabFocusReason)
            Keys.onPressed: event => event.accepted = reader.scrolledBy(event.key)

            HoverHandler {
                cursorShape: text.hoveredLink !== "" ? Qt.PointingHandCursor : Qt.IBeamCursor
            }
        }
    }

    function scrolledBy(key: int): bool {
        const page = flick.height * 0.9;
        const way = {
            [Qt.Key_Down]: 40,
            [Qt.Key_Up]: -40,
            [Qt.Key_PageDown]: page,
            [Qt.Key_Space]: page,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_End]: flick.contentHeight,
            [Qt.Key_Home]: -flick.contentHeight
        }[key];
        if (way === undefined)
            return false;
        scrollBy(way);
        return true;
    }

    // There is more below.
    HandText {
        anchors.horizontalCenter: flick.horizontalCenter
        y: flick.y + flick.height - 6
        visible: flick.contentY + flick.height < flick.contentHeight - 1
        text: "…"
        color: reading.ink
        Accessible.ignored: true
    }

    Row {
        id: tools

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Theme.size.medium
        spacing: Theme.size.small

        PaperButton {
            visible: reader.editor.selected.hasLinks
            iconName: "link"
            text: qsTr("open a link")
            onClicked: {
                const links = reader.editor.links();
                if (links.length > 0)
                    reader.linkWanted(links[0]);
            }
        }
        PaperButton {
            id: edit

            iconName: "pencil"
            text: qsTr("edit")
            onClicked: {
                reader.close();
                reader.editor.startWriting();
            }
        }
        PaperButton {
            text: qsTr("close")
            KeyNavigation.tab: text
            onClicked: reader.close()
        }
    }
}
