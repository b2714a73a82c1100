// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.UI
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    QuickNote {
        id: note

        visible: false
    }
    SignalSpy {
        id: accepted

        target: note
        signalName: "accepted"
    }
    SignalSpy {
        id: closed

        target: note
        signalName: "closed"
    }

    TestCase {
        name: "QuickNote"
        when: windowShown

        function test_aQuickNoteGoesUpAtEnter() {
            note.visible = true;
            note.forceActiveFocus();
            keyClick(Qt.Key_Return);
            compare(accepted.count, 0);
            keyClick("a");
            keyClick(Qt.Key_Return, Qt.ShiftModifier);
            keyClick("b");
            keyClick(Qt.Key_Return);
            compare(accepted.signalArguments[0][0], "a\nb");
            // It stays until whoever puts it up has done so.
            compare(note.text, "a\nb");
            note.problem = "full";
            keyClick("c");
            compare(note.problem, "");
            keyClick(Qt.Key_Escape);
            compare(closed.count, 1);
            compare(Bed.unnamed(note), []);
        }
    }
}
