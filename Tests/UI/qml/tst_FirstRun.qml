// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.UI
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    Component {
        id: firstRun

        FirstRun {
            view: Bed.view
        }
    }

    TestCase {
        id: walk

        property var sheet

        readonly property string board: '{"coupleId":"q3m7xk2p","token":"lm1.q3m7xk2p.a.nbswy3dpo5xxe3de","invite":{"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12","expiresAt":1900000000000}}'
        readonly property string link: '{"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12","expiresAt":1900000000000}'
        readonly property string joined: '{"coupleId":"q3m7xk2p","token":"lm1.q3m7xk2p.b.nbswy3dpo5xxe3de","partnerName":"ann","slot":"b","status":"joined"}'
        readonly property string choose: '{"code":"choose_person","message":"","names":{"a":"ann","b":"bo"},"suggested":"b"}'

        name: "FirstRun"
        when: windowShown

        function init() {
            Bed.make();
            open();
        }
        function open() {
            sheet = createTemporaryObject(firstRun, room);
            tryCompare(sheet, "opened", true);
        }
        function type(text) {
            for (const key of text)
                keyClick(key);
        }
        function focusedName() {
            return room.Window.activeFocusItem.Accessible.name;
        }
        function checkNames() {
            verify(Bed.reached(sheet.contentItem) > 0);
            compare(Bed.unnamed(sheet.contentItem), []);
        }
        function comeTo(door) {
            while (focusedName() !== door)
                keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
        }

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

        function shows(item, text) {
            return item.visible && (item.text === text || Array.from(item.children).some(child => shows(child, text)));
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

        function nowhere(door) {
            Bed.makeNowhere();
            open();
            comeTo(door);
        }
        function test_oneSaysWhereTheBoardLivesAndIsAskedOnce() {
            nowhere("start our board");
            compare(sheet.page, "where");
            checkNames();
            comeTo("in a room that we have");
            compare(sheet.page, "address");
            checkNames();
            for (const [typed, told] of [["", "type its address"], ["http://board.example", "https"], ["what?", "no address"]]) {
                type(typed);
                keyClick(Qt.Key_Return);
                verify(Bed.view.home.face.found.includes(told), Bed.view.home.face.found);
                keyClick(Qt.Key_A, Qt.ControlModifier);
            }
            type("board.example");
            keyClick(Qt.Key_Return);
            compare(Bed.lastRequest(), "GET https://board.example/room ");
            verify(Bed.answer(200, "<html>"));
            verify(Bed.view.home.face.found.includes("no room"));
            keyClick(Qt.Key_Return);
            verify(Bed.answer(200, '{"room":"lumaro","v":1}'));
            verify(Bed.view.home.face.found.includes("encrypted"));
            compare(sheet.page, "address");
            keyClick(Qt.Key_Return);
            compare(sheet.page, "comeIn");
            type("ann");
            keyClick(Qt.Key_Return);
            verify(Bed.lastRequest().startsWith("POST https://board.example/couples "));
            verify(Bed.answer(503, ""));
            comeTo("somewhere else");
            compare(sheet.page, "where");
            comeTo("back");
            comeTo("back");
            comeTo("start our board");
            compare(sheet.page, "comeIn");
        }
        function test_thisComputerKeepsTheBoard() {
            nowhere("start our board");
            comeTo("this computer keeps it");
            verify(Bed.view.home.face.isStarting);
            Bed.answerHomeRoom(false);
            verify(Bed.view.home.face.keeping.includes("didn't start"));
            comeTo("this computer keeps it");
            Bed.answerHomeRoom(true);
            compare(sheet.page, "where");
            verify(Bed.answer(200, '{"room":"lumaro","v":1}'));
            compare(sheet.page, "comeIn");
            compare(Bed.view.home.face.server, "this computer");
            verify(Bed.view.home.face.keeping.includes("ada-laptop.local:7700"));
            type("ann");
            keyClick(Qt.Key_Return);
            verify(Bed.lastRequest().startsWith("POST http://127.0.0.1:7700/couples "));
        }
        function test_aCodeIsTriedOnTheRoomsInThisNetworkFirst() {
            nowhere("i have a code");
            Bed.roomsNearby(["ann", "cleo"]);
            type("bo");
            keyClick(Qt.Key_Return);
            verify(shows(sheet.contentItem, "in this network there is the room of ann, cleo. the code is tried there."));
            compare(Bed.lastRequest(), "");
            type("222222");
            verify(Bed.lastRequest().startsWith("POST http://192.168.1.1:7700/joins/code "));
            verify(Bed.answer(404, '{"code":"code_not_found","message":""}'));
            verify(Bed.lastRequest().startsWith("POST http://192.168.1.2:7700/joins/code "));
            verify(Bed.answer(200, joined));
            tryCompare(sheet, "visible", false);
            compare(Bed.view.home.face.server, "http://192.168.1.2:7700");
        }
        function test_aCodeWaitsForTheAddressOfItsServer() {
            nowhere("i have a code");
            type("bo");
            keyClick(Qt.Key_Return);
            type("222222");
            compare(sheet.page, "address");
            comeTo("back");
            compare(sheet.page, "comeIn");
            comeTo("come in");
            type("192.168.1.4:7700");
            keyClick(Qt.Key_Return);
            verify(Bed.answer(200, '{"room":"lumaro","v":1}'));
            verify(Bed.view.home.face.found.includes("isn't encrypted"));
            keyClick(Qt.Key_Return);
            compare(sheet.page, "comeIn");
            verify(Bed.lastRequest().startsWith("POST http://192.168.1.4:7700/joins/code "));
            verify(Bed.lastRequest().includes('"code":"222222"'));
            verify(Bed.answer(200, joined));
            tryCompare(sheet, "visible", false);
        }

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
