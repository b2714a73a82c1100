// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// A note to jot down, over whatever else is on the screen.
Window {
    id: window

    required property EditorView editor

    /// Shows the window with this text to edit.
    function ask(text: string): void {
        note.text = text;
        show();
        raise();
        requestActivate();
        note.forceActiveFocus();
    }

    width: note.implicitWidth
    height: note.implicitHeight
    flags: Qt.Dialog | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: qsTr("lumaro · quick note")
    // Not every desktop shows transparent windows.
    color: Theme.color.room

    QuickNote {
        id: note

        anchors.fill: parent
        focus: true
        onAccepted: text => {
            if (window.editor.putUpText(text)) {
                window.close();
            } else {
                note.text = text;
            }
        }
        onClosed: window.close()
    }
}
