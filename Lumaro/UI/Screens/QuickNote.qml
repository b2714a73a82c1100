// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets

/// A small note to jot down and put up. Fills a window of its own, and keeps what is written when that closes.
FocusScope {
    id: note

    property alias text: input.text
    /// Why it could not be put up; empty when nothing is known against it.
    property string problem
    readonly property bool hasText: input.text.trim() !== ""

    /// The window is to follow the pointer.
    signal moveWanted
    signal accepted(string text)
    signal closed

    function putUp(): void {
        if (hasText)
            note.accepted(input.text);
    }
    /// With the keys at the end of what is written.
    function takeKeys(): void {
        input.cursorPosition = input.length;
        input.forceActiveFocus();
    }

    onTextChanged: problem = ""
    implicitWidth: 380
    implicitHeight: 340

    Rectangle {
        id: paper

        anchors.fill: parent
        anchors.margins: 28
        color: "transparent"

        Shadow {
            radius: 4
            lift: 12
        }
        // The paper that it will hang on.
        NoteSwatch {
            id: sheet

            anchors.fill: parent
            paper: "butter"
            dark: Theme.isDark
            isWhole: true
        }
        // A window without a frame is carried by its paper.
        DragHandler {
            target: null
            onActiveChanged: if (active) note.moveWanted()
        }
        Tape {
            anchors.horizontalCenter: parent.horizontalCenter
            y: -12
        }
        Flickable {
            id: flick

            anchors.fill: parent
            anchors.margins: Theme.size.large
            anchors.bottomMargin: 64
            contentWidth: width
            contentHeight: input.implicitHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds

            TextEdit {
                id: input

                width: parent.width
                height: Math.max(implicitHeight, flick.height)
                focus: true
                activeFocusOnTab: true
                selectByMouse: true
                wrapMode: TextEdit.Wrap
                textFormat: TextEdit.PlainText
                color: sheet.ink
                selectionColor: Theme.color.accent
                selectedTextColor: Theme.color.onAccent
                font.family: Theme.hand
                font.pixelSize: 28
                Accessible.role: Accessible.EditableText
                Accessible.name: qsTr("a quick note")
                Accessible.multiLine: true
                Keys.onReturnPressed: event => {
                    if (event.modifiers & Qt.ShiftModifier)
                        event.accepted = false;
                    else
                        note.putUp();
                }
                Keys.onEnterPressed: note.putUp()
                Keys.onEscapePressed: note.closed()
                // A button that waits for a text takes no keys.
                Keys.onTabPressed: if (button.enabled) button.forceActiveFocus(Qt.TabFocusReason)
                onCursorRectangleChanged: {
                    const bottom = cursorRectangle.y + cursorRectangle.height;
                    flick.contentY = Math.max(0, Math.min(flick.contentY, cursorRectangle.y), bottom - flick.height);
                }
            }
        }
        HandText {
            visible: input.text === "" && input.preeditText === ""
            x: Theme.size.large
            y: Theme.size.large
            width: parent.width - 2 * Theme.size.large
            text: qsTr("say something…")
            color: sheet.smallInk
            font.pixelSize: 28
            font.weight: Font.Normal
            Accessible.ignored: true
        }
        Text {
            anchors.left: parent.left
            anchors.leftMargin: Theme.size.large
            anchors.right: button.left
            anchors.rightMargin: Theme.size.small
            anchors.verticalCenter: button.verticalCenter
            wrapMode: Text.Wrap
            text: note.problem !== "" ? note.problem : note.hasText ? qsTr("shift + enter: a new line\nesc: later") : qsTr("shift + enter: a new line")
            color: note.problem !== "" ? sheet.ink : sheet.smallInk
            textFormat: Text.PlainText
            font.pixelSize: Theme.size.captionText - 1
            font.weight: note.problem !== "" ? Font.DemiBold : Font.Normal
            Accessible.role: note.problem !== "" ? Accessible.AlertMessage : Accessible.StaticText
            Accessible.name: text
        }
        PaperButton {
            id: button

            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: Theme.size.medium
            kind: PaperButton.Primary
            text: qsTr("put it up")
            enabled: note.hasText
            Keys.onTabPressed: input.forceActiveFocus(Qt.TabFocusReason)
            onClicked: note.putUp()
            Keys.onEscapePressed: note.closed()
            KeyNavigation.backtab: input
        }
    }
}
