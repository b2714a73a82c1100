// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.UI
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    EditorCase {
        name: "People"
        room: room

        function beginning(start) {
            return find(room.Window.contentItem, item => item.Accessible.name?.startsWith(start));
        }

        function test_theSelectedItemTellsWhoseItIs() {
            hangNote(700, 400, {
                type: "text",
                text: "hello"
            });
            verify(!beginning("bo, "));
            click(700, 400);
            verify(beginning("bo, "));
            keyClick(Qt.Key_Escape);
            Bed.editor.putUpText("mine");
            Bed.editor.select(Bed.items()[1]);
            verify(beginning("you, ") && !beginning("you, ").text.endsWith("seen"));
            Bed.partnerHasSeen();
            verify(beginning("you, ").text.endsWith(" · seen"));
        }

        function test_theClocksOfferHoursAndTellWhatIsMissing() {
            hang("timezones", 700, 400, {
                units: "celsius"
            });
            click(700, 400);
            verify(beginning("they haven't shared their hours"));
            press("let them see your hours");
            tryVerify(() => named("yes, share"));
            verify(beginning("what leaves this computer"));
            compare(focused(), "no");
            verify(!Bed.place.sharesHours);
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Return);
            verify(Bed.place.sharesHours);
            tryVerify(() => !named("let them see your hours"));
            press("ask them");
            verify(Bed.quickNote.startsWith("what time is it where you are?"));
            Bed.partnerSharesHours("Europe/Lisbon");
            tryVerify(() => !beginning("they haven't shared their hours") && !named("ask them"));
        }
    }
}
