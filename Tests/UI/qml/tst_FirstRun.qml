// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    FirstRunCase {
        name: "FirstRun"
        room: room

        function test_oneStartsABoardByKeysAlone() {
            checkNames();
            compare(focusedName(), "start our board");
            keyClick(Qt.Key_Return);
            checkNames();
            type("ann");
            keyClick(Qt.Key_Return);
            compare(Bed.storedName(), "ann");
            verify(Bed.lastRequest().includes('"name":"ann"'));
            verify(Bed.answer(201, board));
            compare(sheet.page, "bringThemOver");
            verify(Bed.answer(201, '{"code":"481936","expiresAt":1790000540000,"slot":"b"}'), "no code was asked for");
            compare(Bed.view.face.code, "481 936");
            checkNames();
            Bed.partnerComes("bo");
            compare(focusedName(), "to our board");
            keyClick(Qt.Key_Return);
            tryCompare(sheet, "visible", false);
        }

        function test_theOtherComesInAtTheSixthDigit() {
            comeTo("i have a code");
            type("bo");
            keyClick(Qt.Key_Return);
            checkNames();
            type("111111");
            verify(Bed.answer(404, '{"code":"code_not_found","message":""}'));
            verify(Bed.view.face.failure !== "");
            type("222222");
            verify(Bed.lastRequest().includes('"code":"222222"'));
            compare(Bed.view.face.failure, "");
            verify(Bed.answer(200, joined));
            compare(Bed.storedName(), "bo");
            compare(Bed.view.face.greeting, "ann is on the board 💌");
            tryCompare(sheet, "visible", false);
        }

        function text() {
            return room.Window.activeFocusItem.text;
        }
        function test_afterACodeThatFailedNothingThatIsTypedIsLost() {
            comeTo("i have a code");
            type("bo");
            keyClick(Qt.Key_Return);
            type("111111");
            verify(Bed.answer(404, '{"code":"code_not_found","message":""}'));
            compare(focusedName(), "the six digits they read out");
            compare(text(), "");
            keyClick(Qt.Key_Backtab);
            compare(text(), "bo");
            type("bea");
            compare(text(), "bea");
            keyClick(Qt.Key_Return);
            type("222222");
            verify(Bed.lastRequest().includes('"name":"bea"'));
            verify(Bed.lastRequest().includes('"code":"222222"'));
        }

        function test_aMouseIsLedAroundTheSamePlaces() {
            comeTo("i have a code");
            type("bo");
            keyClick(Qt.Key_Return);
            type("111111");
            verify(Bed.answer(503, ""));
            const name = room.Window.activeFocusItem;
            keyClick(Qt.Key_Backtab);
            const field = room.Window.activeFocusItem;
            name.forceActiveFocus();
            mouseClick(field, field.width - 4, field.height / 2);
            type("b");
            compare(field.text, "bob");
        }

        function test_whatIsNoLinkIsCalledThat_data() {
            return [
                {
                    tag: "nothing",
                    pasted: "",
                    told: "paste the link"
                },
                {
                    tag: "garbage",
                    pasted: "https://example.org/",
                    told: "no lumaro link"
                }
            ];
        }
        function test_whatIsNoLinkIsCalledThat(data) {
            comeTo("i have a link");
            type("bo");
            keyClick(Qt.Key_Return);
            type(data.pasted);
            keyClick(Qt.Key_Return);
            verify(Bed.view.face.failure.includes(data.told));
            compare(focusedName(), "the link they sent you");
            type("k");
            compare(text(), "k");
            compare(Bed.view.face.failure, "");
        }

        function startOurs() {
            keyClick(Qt.Key_Return);
            type("ann");
            keyClick(Qt.Key_Return);
            Bed.answer(201, board);
            Bed.answer(201, '{"code":"481936","expiresAt":1790000540000,"slot":"b"}');
            Bed.answer(201, link);
            compare(sheet.page, "bringThemOver");
        }
        function test_bothStartedABoardAndOneComesOver() {
            startOurs();
            comeTo("i have a code");
            compare(sheet.page, "comeIn");
            compare(focusedName(), "the six digits they read out");
            type("111111");
            verify(Bed.answer(404, '{"code":"code_not_found","message":""}'));
            verify(Bed.view.face.isOnBoard);
            comeTo("back");
            compare(sheet.page, "bringThemOver");
            compare(Bed.view.face.failure, "");
            Bed.answer(201, link); // which the page asked for again
            comeTo("i have a code");
            type("222222");
            verify(!Bed.view.face.inviteQuestion.isAsked);
            verify(Bed.answer(200, joined.replace(/q3m7xk2p/g, "other234")));
            compare(Bed.view.face.partnerName, "ann");
            verify(Bed.lastRequest().startsWith("DELETE "));
            tryCompare(sheet, "visible", false);
        }

        function test_aLinkInAMessageWillDo() {
            comeTo("i have a link");
            type("bo");
            keyClick(Qt.Key_Return);
            Bed.copy("come! https://x/for/abcdefgh12 :)");
            keyClick(Qt.Key_V, Qt.ControlModifier);
            keyClick(Qt.Key_Return);
            verify(Bed.lastRequest().includes("abcdefgh12"));
        }

        function test_theWayBackForgetsWhatFailed() {
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Return);
            verify(Bed.answer(503, ""));
            compare(sheet.page, "comeIn");
            comeTo("back");
            compare(sheet.page, "welcome");
            compare(Bed.view.face.failure, "");
            compare(focusedName(), "start our board");
        }

        // Where the board lives, in a build that does not say.

        function test_oneSaysWhoOneIs() {
            Bed.view.joinByCode("123456");
            verify(Bed.answer(409, choose));
            compare(sheet.page, "choosing");
            checkNames();
            compare(focusedName(), "bo");
            keyClick(Qt.Key_Return);
            verify(Bed.lastRequest().includes('"slot":"b"'));
        }

        function test_aLockedKeychainIsAskedAgain() {
            Bed.makeLocked();
            open();
            compare(sheet.page, "locked");
            verify(shows(sheet.contentItem, "this computer's keychain didn't open"));
            checkNames();
            keyClick(Qt.Key_Return);
            Bed.openKeychain();
            compare(sheet.page, "welcome");
        }
    }
}
