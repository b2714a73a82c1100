// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    EditorCase {
        name: "EditorPictures"
        room: room

        function choose(what) {
            press(what);
            verify(Bed.choose(Bed.picture()), "nobody asks for a file");
            // The window manager would.
            room.Window.window.requestActivate();
            tryVerify(() => room.Window.activeFocusItem);
        }

        function test_aChosenPhotoGoesUp() {
            choose("a photo");
            compare(kinds(), ["photo"]);
            fuzzyCompare(Bed.item(Bed.items()[0]).payload.aspect, 2, 0.01);
        }

        function test_aStickerIsCutOutOfWhatWasChosen() {
            choose("a sticker");
            compare(Bed.items(), []);
            tryVerify(() => named("the picture to cut out of"));
            const picture = named("the picture to cut out of");
            waitForItemPolished(picture.parent);
            mouseDrag(picture, picture.width * 0.1, picture.height * 0.1, picture.width * 0.8, picture.height * 0.8);
            Bed.pass(0);
            press("stick it up");
            Bed.pass(0);
            compare(kinds(), ["sticker"]);
            // The red square in the middle.
            fuzzyCompare(Bed.item(Bed.items()[0]).payload.aspect, 1, 0.1);
            tryVerify(() => focused() === "the board");
        }

        function test_aPictureHangsWhereItFell() {
            Bed.drop(page, place(300, 300), "text/uri-list", Bed.picture());
            compare(kinds(), ["photo"]);
            fuzzyCompare(center(Bed.items()[0]).x, 300, 2);
            fuzzyCompare(center(Bed.items()[0]).y, 300, 2);
        }

        function test_aPictureOfAnotherProgramIsDecodedInTheBackground_data() {
            return [["pasted", () => {
                    Bed.copyPicture();
                    keyClick(Qt.Key_V, Qt.ControlModifier);
                    compare(Bed.items(), []);
                    Bed.pass(0);
                }], ["dropped", () => Bed.dropPicture(page, place(300, 300))]].map(([tag, bring]) => ({
                        tag: tag,
                        bring: bring
                    }));
        }
        function test_aPictureOfAnotherProgramIsDecodedInTheBackground(data) {
            data.bring();
            compare(kinds(), ["photo"]);
            fuzzyCompare(Bed.item(Bed.items()[0]).payload.aspect, 2, 0.01);
            compare(Bed.decodedAtOnce(), 0);
        }

        function test_wordsThatFallAreANote() {
            Bed.drop(page, place(300, 300), "text/plain", "buy oranges");
            compare(kinds(), ["note"]);
            compare(texts(Bed.items()[0])[0].text, "buy oranges");
        }

        function test_aNoteIsCopiedAndPasted() {
            hangNote(700, 500, {
                type: "text",
                text: "buy oranges"
            });
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_C, Qt.ControlModifier);
            keyClick(Qt.Key_V, Qt.ControlModifier);
            compare(kinds(), ["note", "note"]);
            compare(texts(Bed.items()[1])[0].text, "buy oranges");
        }
    }
}
