// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import DesignSystem
import Lumaro.UI
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    EditorCase {
        name: "Music"
        room: room

        function hangRecord(slot) {
            return hang("nowPlayingSlot", 700, 400, {
                slot: slot
            });
        }
        function risingNotes() {
            return find(page, item => item.toString().startsWith("RisingNotes"));
        }

        function test_onesOwnCardAsksBeforeItSharesAndThenSwitches() {
            hangRecord("a");
            click(700, 400);
            press("share what i'm listening to");
            tryVerify(() => named("yes, share"));
            verify(!Bed.music.isShared);
            press("yes, share");
            verify(Bed.music.isShared);
            tryVerify(() => !named("yes, share"));
            press("share what i'm listening to");
            verify(!Bed.music.isShared);
        }

        function test_theSelectedCardTellsItsTrackInFullAsItMovesOn() {
            Bed.partnerPlays("harbour lights", "the paper boats");
            hangRecord("b");
            verify(!named("1:23 of 3:45"));
            keyClick(Qt.Key_Tab);
            verify(named("harbour lights") && named("the paper boats") && named("1:23 of 3:45"));
            verify(!named("share what i'm listening to"));
            Bed.pass(5);
            tryVerify(() => named("1:28 of 3:45"), 2000);
            keyClick(Qt.Key_Escape);
            verify(!named("harbour lights"));
        }

        function test_aNewSongIsGreetedForAMoment() {
            Theme.isMotionReduced = false;
            Bed.partnerPlays("harbour lights", "the paper boats");
            hangRecord("b");
            waitForRendering(page);
            verify(!risingNotes());
            Bed.partnerPlays("a lamp in the window", "the paper boats");
            verify(risingNotes());
            tryVerify(() => !risingNotes(), 3000);
            Theme.isMotionReduced = true;
            Bed.partnerPlays("harbour lights", "the paper boats");
            verify(!risingNotes());
        }
    }
}
