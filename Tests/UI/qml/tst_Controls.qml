// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import QtTest
import DesignSystem
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    PaperButton {
        id: button

        property int presses: 0

        text: "start"
        onClicked: presses += 1
    }
    Toggle {
        id: toggle

        y: 60
        text: "sounds"
    }
    DigitsField {
        id: digits

        y: 120
        width: 420
        label: "digits"
    }
    SignalSpy {
        id: completed

        target: digits
        signalName: "completed"
    }
    Sheet {
        id: sheet

        title: "a sheet"

        PaperButton {
            id: first

            text: "one"
            focus: true
        }
        Field {
            id: second

            label: "two"
        }
    }
    Toast {
        id: toast

        lasts: 30
    }
    SignalSpy {
        id: acted

        target: toast
        signalName: "acted"
    }
    Component {
        id: gallery

        Gallery {}
    }
    Item {
        id: nameless

        activeFocusOnTab: true
    }

    TestCase {
        name: "Controls"
        when: windowShown

        function focused() {
            return room.Window.activeFocusItem;
        }
        function isOnSheet(item) {
            for (let at = item; at; at = at.parent) {
                if (at === sheet.contentItem)
                    return true;
            }
            return false;
        }

        function test_enterAndSpacePress() {
            button.forceActiveFocus();
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            compare(button.presses, 2);
            toggle.forceActiveFocus();
            keyClick(Qt.Key_Return);
            verify(toggle.checked);
            keyClick(Qt.Key_Space);
            verify(!toggle.checked);
        }

        function test_digitsPassOverWhatLiesBetween_data() {
            return [
                {
                    tag: "as it is read out",
                    pasted: "123 456",
                    digits: "123456"
                },
                {
                    tag: "in a sentence",
                    pasted: "it's 98-76-54!",
                    digits: "987654"
                },
                {
                    tag: "too many",
                    pasted: "12345678",
                    digits: "123456"
                },
                {
                    tag: "of another script",
                    pasted: "٤٨١٩٣٦",
                    digits: "٤٨١٩٣٦"
                }
            ];
        }
        function test_digitsPassOverWhatLiesBetween(data) {
            digits.clear();
            completed.clear();
            Bed.copy(data.pasted);
            digits.forceActiveFocus();
            keyClick(Qt.Key_V, Qt.ControlModifier);
            compare(digits.digits, data.digits);
            compare(completed.count, 1);
        }

        function test_fiveDigitsAreNoCode() {
            digits.clear();
            completed.clear();
            digits.forceActiveFocus();
            for (const key of "1 2x345")
                keyClick(key);
            compare(digits.digits, "12345");
            compare(completed.count, 0);
        }

        function test_keysStayOnASheet() {
            button.forceActiveFocus();
            sheet.open();
            tryCompare(sheet, "opened", true);
            compare(focused(), first);
            const met = new Set();
            for (let step = 0; step < 8; ++step) {
                keyClick(Qt.Key_Tab);
                verify(isOnSheet(focused()), "the keys left the sheet");
                met.add(focused());
            }
            compare(met.size, 3); // the cross, the button, the field
            keyClick(Qt.Key_Escape);
            tryCompare(sheet, "visible", false);
            compare(focused(), button);
        }

        function test_aSheetThatMustBeAnsweredStays() {
            sheet.isDismissable = false;
            sheet.open();
            tryCompare(sheet, "opened", true);
            keyClick(Qt.Key_Escape);
            wait(0);
            verify(sheet.opened);
            sheet.close();
            tryCompare(sheet, "visible", false);
            sheet.isDismissable = true;
        }

        function test_aSlipLeavesByItselfAndTakesItsAct() {
            toast.show("taken down", "");
            verify(toast.isShown);
            tryCompare(toast, "isShown", false);
            toast.lasts = 60000;
            toast.show("taken down", "undo");
            const undo = findChild(toast, "action");
            undo.forceActiveFocus();
            keyClick(Qt.Key_Return);
            compare(acted.count, 1);
            verify(!toast.isShown);
        }

        function test_everyControlHasAName() {
            const all = createTemporaryObject(gallery, room);
            verify(Bed.reached(all) > 20);
            compare(Bed.unnamed(all), []);
            compare(Bed.unnamed(nameless).length, 1);
        }
    }
}
