// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// A note to jot down, over whatever else is on the screen. What is written and not put up is there when it comes again.
Window {
    id: window

    required property EditorView editor

    /// Shows the window, with that text below what was begun.
    function ask(text: string): void {
        if (!visible)
            note.text = editor.quickNote();
        if (text !== "")
            note.text = note.text.trim() === "" ? text : note.text + "\n" + text;
        show();
        raise();
        requestActivate();
        note.takeKeys();
    }

    width: Math.min(note.implicitWidth, Screen.desktopAvailableWidth || note.implicitWidth)
    height: Math.min(note.implicitHeight, Screen.desktopAvailableHeight || note.implicitHeight)
    minimumWidth: 260
    minimumHeight: 220
    flags: Qt.Dialog | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: qsTr("lumaro · quick note")
    // Not every desktop shows transparent windows.
    color: Theme.color.room
    onClosing: editor.keepQuickNote(note.text)

    QuickNote {
        id: note

        anchors.fill: parent
        focus: true
        onTextChanged: window.editor.keepQuickNote(text)
        onMoveWanted: window.startSystemMove()
        onAccepted: text => {
            if (!window.editor.putUpText(text))
                return;
            note.text = "";
            window.close();
        }
        onClosed: window.close()
    }

    Connections {
        target: window.editor

        // Nobody sees the board's window from here.
        function onNoticed(text: string): void {
            if (window.visible)
                note.problem = text;
        }
    }
}
