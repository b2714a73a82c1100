// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    FirstRunCase {
        name: "Home"
        room: room

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
    }
}
