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
        id: bench

        name: "Notes"
        room: room

        function longText() {
            return {
                type: "text",
                text: "return the books, ask lena about the ladder, soup from the blue pot. ".repeat(30)
            };
        }
        function plain(text) {
            return {
                type: "text",
                text: text
            };
        }
        function cleanup() {
            Theme.isDark = false;
        }

        function test_nBeginsANoteThatGoesUpWhenItIsLetGoOf_data() {
            return [
                {
                    tag: "by N",
                    begin: () => keyClick(Qt.Key_N)
                },
                {
                    tag: "by the dock",
                    begin: () => press("a note")
                }
            ];
        }
        function test_nBeginsANoteThatGoesUpWhenItIsLetGoOf(data) {
            data.begin();
            tryVerify(() => focused() === "the note's text");
            keys("buy oranges");
            Bed.pass(5);
            compare(Bed.acts(), 0);
            compare(Bed.items(), []);
            keyClick(Qt.Key_Escape);
            compare(Bed.acts(), 1);
            compare(texts(Bed.items()[0])[0].text, "buy oranges");
            compare(focused(), "the board");
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(Bed.items(), []);
        }

        function test_anEmptyNoteNeverGoesUp() {
            keyClick(Qt.Key_N);
            tryVerify(() => focused() === "the note's text");
            keys("  ");
            keyClick(Qt.Key_Return);
            click(60, 60);
            verify(!Bed.editor.isWriting);
            compare(Bed.items(), []);
            compare(Bed.acts(), 0);
        }

        function test_aClickElsewherePutsItUpAndUndoWhileWritingTakesBackLetters() {
            const other = hangNote(300, 300);
            keyClick(Qt.Key_N);
            tryVerify(() => focused() === "the note's text");
            keys("ab");
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            verify(Bed.editor.isWriting);
            compare(Bed.item(other).kind, "note");
            keys("cd");
            click(60, 60);
            compare(Bed.acts(), 1);
            compare(texts(Bed.items()[1])[0].text, "cd");
        }

        function test_whereTheHeartIsItSaysWhenTheNoteComesDown() {
            const id = Bed.hang({
                kind: "note",
                center: {
                    x: 700,
                    y: 400
                },
                payload: {
                    pm: paragraph(plain("milk")),
                    paper: "butter",
                    pin: "brass",
                    expiresAt: Bed.now() + 3600 * 1000
                }
            });
            click(700, 400);
            verify(find(page, item => /^comes down (today|tomorrow) at \d+:\d\d$/.test(item.text ?? "")));
            press("keep it up");
            verify(!Bed.item(id).payload.expiresAt);
            verify(!named("keep it up"));
            press("let it go after a day");
            verify(Bed.item(id).payload.expiresAt > 0);
        }

        function test_aLongNoteIsReadAndScrolledAndThenWritten() {
            hangNote(700, 400, longText());
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
            tryVerify(() => focused().startsWith("return the books"));
            verify(!Bed.editor.isWriting);
            const flick = find(room.Window.contentItem, item => item.contentY !== undefined && item.contentHeight > item.height + 100);
            verify(flick);
            keyClick(Qt.Key_PageDown);
            verify(flick.contentY > 100);
            keyClick(Qt.Key_End);
            verify(flick.atYEnd);
            keyClick(Qt.Key_Escape);
            tryVerify(() => focused() === "the board");
            keyClick(Qt.Key_V);
            press("edit");
            tryVerify(() => Bed.editor.isWriting);
            keyClick(Qt.Key_Escape);
        }

        function test_aLinkOpensOnlyAfterItIsToldWhereTo() {
            Bed.watchLinks();
            hangNote(700, 400, plain("look: https://\u0430pple.com/x, file:///etc/passwd"));
            click(700, 400);
            keyClick(Qt.Key_O);
            tryVerify(() => find(room.Window.contentItem, item => item.text === "xn--pple-43d.com"));
            compare(Bed.openedLinks(), []);
            press("no, leave it");
            tryVerify(() => focused() === "the board");
            keyClick(Qt.Key_V);
            press("open a link");
            press("open it");
            compare(Bed.openedLinks(), ["https://xn--pple-43d.com/x"]);
            Bed.editor.openLink("file:///etc/passwd");
            compare(Bed.openedLinks().length, 1);
        }

        function test_papersAndPinsAreChosenByKeys() {
            const id = hangNote(700, 400, plain("milk"));
            click(700, 400);
            press("paper and pin");
            tryVerify(() => focused() === "butter");
            keyClick(Qt.Key_Tab);
            compare(focused(), "blush");
            keyClick(Qt.Key_Return);
            compare(Bed.item(id).payload.paper, "blush");
            compare(Bed.unnamed(room.Window.contentItem), []);
            press("dotted tape");
            compare(Bed.item(id).payload.pin, "tapeDots");
            keyClick(Qt.Key_Escape);
            tryVerify(() => !named("kraft"));
            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_N);
            press("paper and pin");
            press("kraft");
            keyClick(Qt.Key_Escape);
            tryVerify(() => focused() === "the note's text");
            keys("eggs");
            keyClick(Qt.Key_Escape);
            compare(Bed.item(Bed.items()[1]).payload.paper, "kraft");
        }

        function test_aTiltedNoteIsWrittenUpright() {
            Bed.hang({
                kind: "note",
                center: {
                    x: 700,
                    y: 400
                },
                rotationDegrees: 12,
                payload: {
                    pm: paragraph(plain("milk")),
                    paper: "sky",
                    pin: "tape"
                }
            });
            const view = () => find(board, item => item.itemId !== undefined && item.kind === "note");
            compare(view().rotation, 12);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
            tryCompare(view(), "rotation", 0);
            compare(Bed.editor.selected.tilt, 12);
            keyClick(Qt.Key_Escape);
            tryCompare(view(), "rotation", 12);
        }
    }
}
