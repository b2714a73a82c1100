// SPDX-License-Identifier: Apache-2.0
import QtQuick
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

        function test_sixDigitsAreACodeWhateverLiesBetween_data() {
            return [["as it is read out", "123 456", "123456"], ["in a sentence", "it's 98-76-54!", "987654"], ["too many", "12345678", "123456"], ["too few", "1 2x345", "12345"], ["of another script", "٤٨١٩٣٦", "٤٨١٩٣٦"]].map(([tag, pasted, digits]) => ({
                        tag: tag,
                        pasted: pasted,
                        digits: digits
                    }));
        }
        function test_sixDigitsAreACodeWhateverLiesBetween(data) {
            digits.clear();
            completed.clear();
            Bed.copy(data.pasted);
            digits.forceActiveFocus();
            keyClick(Qt.Key_V, Qt.ControlModifier);
            compare(digits.digits, data.digits);
            compare(completed.count, data.digits.length === 6 ? 1 : 0);
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

        function test_aMissingNameIsSeen() {
            compare(Bed.unnamed(nameless).length, 1);
        }
    }
}
