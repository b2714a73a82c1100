// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A small note to jot down and put up. Fills a window of its own.
FocusScope {
    id: note

    property alias text: input.text

    signal accepted(string text)
    signal closed

    function putUp(): void {
        if (input.text.trim() === "")
            return;
        const written = input.text;
        input.clear();
        note.accepted(written);
    }

    implicitWidth: 340
    implicitHeight: 320

    Rectangle {
        id: paper

        anchors.fill: parent
        anchors.margins: 28
        radius: 4
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.isDark ? "#e9dcb4" : "#fff4cc"
            }
            GradientStop {
                position: 1
                color: Theme.isDark ? "#dccb9b" : "#fbe8ae"
            }
        }

        Shadow {
            radius: 4
            lift: 12
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
                color: Theme.inkColor("ink")
                selectionColor: "#b5472f"
                selectedTextColor: "#fff8ef"
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
                KeyNavigation.tab: button
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
            color: "#7a6a4a"
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
            text: qsTr("shift + enter: a new line")
            color: "#6b5c3e"
            textFormat: Text.PlainText
            font.pixelSize: Theme.size.captionText - 1
        }
        PaperButton {
            id: button

            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: Theme.size.medium
            kind: PaperButton.Primary
            text: qsTr("put it up")
            enabled: input.text.trim() !== ""
            onClicked: note.putUp()
            Keys.onEscapePressed: note.closed()
            KeyNavigation.backtab: input
        }
    }
}
