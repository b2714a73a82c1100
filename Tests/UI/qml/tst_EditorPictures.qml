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
            const picture = underScissors();
            press("frame");
            mouseDrag(picture, picture.width * 0.1, picture.height * 0.1, picture.width * 0.8, picture.height * 0.8);
            Bed.pass(0);
            press("stick it up");
            Bed.pass(0);
            compare(kinds(), ["sticker"]);
            // The red square in the middle.
            fuzzyCompare(Bed.item(Bed.items()[0]).payload.aspect, 1, 0.1);
            tryVerify(() => focused() === "the board");
        }

        function underScissors() {
            tryVerify(() => named("the picture to cut out of"));
            const picture = named("the picture to cut out of");
            waitForItemPolished(picture.parent);
            return picture;
        }
        function test_theGuessIsEnoughAndKeysCorrectIt() {
            Bed.putUpSticker(Bed.picture());
            underScissors();
            tryVerify(() => focused() === "the picture to cut out of");
            verify(Bed.pictures.cutOut.hasEdge && !Bed.pictures.cutOut.canUndo);
            // A brush over all of it.
            for (let i = 0; i < 9; ++i)
                keyClick(Qt.Key_Plus);
            keyClick(Qt.Key_X);
            Bed.pass(0);
            verify(Bed.pictures.cutOut.canUndo);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            Bed.pass(0);
            verify(!Bed.pictures.cutOut.canUndo);
            keyClick(Qt.Key_Return);
            Bed.pass(0);
            compare(kinds(), ["sticker"]);
            fuzzyCompare(Bed.item(Bed.items()[0]).payload.aspect, 1, 0.1);
        }
        function test_aPictureThatComesMeanwhileWaitsForTheScissors() {
            Bed.putUpSticker(Bed.picture());
            Bed.putUpSticker(Bed.picture());
            for (let count = 1; count <= 2; ++count) {
                underScissors();
                press("stick it up");
                Bed.pass(0);
                compare(kinds().length, count);
            }
            tryVerify(() => !named("the picture to cut out of"));
        }

        // Large.

        function hangPhotos(count) {
            for (let i = 0; i < count; ++i) {
                Bed.drop(page, place(300 + 300 * i, 300), "text/uri-list", Bed.picture());
                Bed.editor.setCaption("photo " + i);
            }
            compare(kinds().length, count);
        }
        function openLarge(x) {
            const at = place(x, 300);
            mouseDoubleClickSequence(page, at.x, at.y);
            tryVerify(() => named("close"));
            Bed.pass(0);
        }
        function test_aDoubleClickShowsAPhotoLargeAndArrowsWalkOn() {
            hangPhotos(3);
            openLarge(300);
            compare(Bed.pictures.large.caption, "photo 0");
            compare(focused(), "photo, large, 'photo 0'");
            compare(Bed.pictures.large.aspect, 2);
            for (const [key, caption] of [[Qt.Key_Left, "photo 0"], [Qt.Key_Right, "photo 1"], [Qt.Key_End, "photo 2"], [Qt.Key_Right, "photo 2"]]) {
                keyClick(key);
                compare(Bed.pictures.large.caption, caption);
            }
            press("the one before");
            compare(Bed.pictures.large.number, 2);
            mouseClick(room.Window.contentItem, 5, 5);
            tryVerify(() => focused() === "the board");
            verify(!Bed.pictures.large.isOpen);
            compare(Bed.editor.selected.text, "photo 1");
        }
        function test_theCaptionHasAKeyOfItsOwn_data() {
            return [["on the board", () => keyClick(Qt.Key_C)], ["large", () => {
                        keyClick(Qt.Key_Return);
                        tryVerify(() => named("close"));
                        keyClick(Qt.Key_C);
                    }]].map(([tag, ask]) => ({
                        tag: tag,
                        ask: ask
                    }));
        }
        function test_theCaptionHasAKeyOfItsOwn(data) {
            hangPhotos(1);
            data.ask();
            tryVerify(() => focused() === "caption");
            keyClick(Qt.Key_A, Qt.ControlModifier);
            keys("lake");
            keyClick(Qt.Key_Return);
            compare(Bed.item(Bed.items()[0]).payload.caption, "lake");
        }
        function test_aLargePhotoIsCopiedAndSaved() {
            hangPhotos(1);
            openLarge(300);
            Bed.copy("nothing");
            keyClick(Qt.Key_C, Qt.ControlModifier);
            Bed.pass(0);
            verify(Bed.hasCopiedPicture());
            keyClick(Qt.Key_S, Qt.ControlModifier);
            verify(Bed.choose("file://" + Bed.path("kept.jpg")));
            verify(Bed.isPictureAt(Bed.path("kept.jpg")));
            compare(Bed.pictures.large.said, "saved as kept.jpg");
            Bed.pictures.large.saveTo("/nowhere/at/all.jpg");
            Bed.pass(0);
            compare(Bed.pictures.large.said, "it couldn't be saved there. try another folder?");
        }
        function test_whatIsTakenDownWhileItIsLargeMakesWayForTheNext() {
            hangPhotos(2);
            openLarge(300);
            Bed.pass(1);
            Bed.partnerTakesDown(Bed.items()[0]);
            compare(Bed.pictures.large.caption, "photo 1");
            compare(Bed.pictures.large.said, "the one before has been taken down.");
            Bed.pass(1);
            Bed.partnerTakesDown(Bed.items()[0]);
            tryVerify(() => focused() === "the board");
            verify(find(room.Window.contentItem, item => item.text === "that picture has been taken down."));
        }

        // What goes wrong.

        function test_offlineOrTwoAtOnceNothingIsLost() {
            Bed.breakLine();
            Bed.drop(page, place(300, 300), "text/uri-list", Bed.picture() + "\r\n" + Bed.picture());
            Bed.dropPicture(page, place(900, 300));
            compare(kinds(), ["photo", "photo", "photo"]);
        }
        function test_aFullDiskIsSaidAndTheNextPictureGoesUp() {
            Bed.fillDisk(true);
            Bed.drop(page, place(300, 300), "text/uri-list", Bed.picture());
            compare(kinds(), []);
            verify(find(room.Window.contentItem, item => String(item.text).includes("couldn't save it")));
            Bed.fillDisk(false);
            Bed.drop(page, place(300, 300), "text/uri-list", Bed.picture());
            compare(kinds(), ["photo"]);
        }
        function test_whatCannotGoUpSaysWhy() {
            Bed.pictures.drop(["file:///usr"], Qt.point(300, 300));
            Bed.pass(0);
            verify(find(room.Window.contentItem, item => item.text === "that's a folder — drop the pictures that are in it."));
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
