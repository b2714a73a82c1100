// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import DesignSystem
import Lumaro.UI
import Lumaro.Testing

Item {
    id: room

    width: 400
    height: 300

    Component {
        id: boardWindow

        BoardWindow {
            view: Bed.view
            scene: Bed.scene
            editor: Bed.editor
            pictures: Bed.pictures
            settings: Bed.settings
            music: Bed.music
            place: Bed.place
            speech: Bed.speech
            screens: []
            desktop: Bed.desktop
        }
    }

    TestCase {
        name: "Window"
        when: windowShown

        property BoardWindow window

        function open() {
            Theme.isMotionReduced = true;
            window = createTemporaryObject(boardWindow, room);
            window.show();
            window.requestActivate();
            tryVerify(() => window.active && window.activeFocusItem);
        }
        function hangNote() {
            Bed.hang({
                kind: "note",
                center: {
                    x: 700,
                    y: 500
                },
                payload: {
                    pm: {
                        type: "doc"
                    },
                    paper: "butter",
                    pin: "brass"
                }
            });
        }
        function focused() {
            return window.activeFocusItem.Accessible.name;
        }
        function hear(least) {
            verify(Bed.reached(window.contentItem) >= least, Bed.reached(window.contentItem));
            compare(Bed.unnamed(window.contentItem), []);
        }
        // What Tab comes to from here on, until it has been everywhere.
        function walk(most = 60) {
            const names = [];
            for (let step = 0; step < most && !names.includes(focused()); ++step) {
                names.push(focused());
                keyClick(Qt.Key_Tab);
            }
            return names;
        }
        function comeTo(name, key = Qt.Key_Tab) {
            for (let step = 0; step < 60 && focused() !== name; ++step)
                keyClick(key);
            compare(focused(), name);
        }

        function test_everyControlHasANameWhateverLiesOnTheBoard_data() {
            return [["the board", () => {}, 14], ["an item", () => keyClick(Qt.Key_Tab), 20], ["the pen", () => keyClick(Qt.Key_D), 12], ["the writing", () => {
                    keyClick(Qt.Key_Tab);
                    keyClick(Qt.Key_Return);
                }, 20], ["the board page", () => window.showPage("boardPage"), 20], ["the settings", () => window.showPage("settings"), 20]].map(([tag, lay, least]) => ({
                        tag: tag,
                        lay: lay,
                        least: least
                    }));
        }
        function test_everyControlHasANameWhateverLiesOnTheBoard(data) {
            Bed.makeOnBoard();
            open();
            hangNote();
            data.lay();
            wait(0);
            hear(data.least);
        }
        function test_thatItHangsAndOpensAtLoginIsToldOnceAndUndoneThere() {
            Bed.makeOnBoard();
            Bed.forgetTelling();
            verify(Bed.settings.opensAtLogin && Bed.view.face.showsOnDesktop);
            open();
            tryVerify(() => focused() === "all right");
            hear(3);
            comeTo("it hangs on your desktop");
            keyClick(Qt.Key_Space);
            comeTo("it opens when you log in");
            keyClick(Qt.Key_Space);
            verify(!Bed.settings.opensAtLogin && !Bed.view.face.showsOnDesktop);
            comeTo("all right");
            keyClick(Qt.Key_Return);
            tryVerify(() => focused() === "the board");
            verify(!Bed.desktop.isToBeTold);
        }
        function test_firstRunLiesOverTheBoardUntilThereIsOne() {
            Bed.make();
            open();
            tryVerify(() => focused() === "start our board");
            hear(3);
            Bed.view.joinByCode("123456");
            Bed.answer(200, '{"coupleId":"q3m7xk2p","token":"lm1.q3m7xk2p.b.nbswy3dpo5xxe3de","partnerName":"ann","slot":"b","status":"joined"}');
            tryVerify(() => focused() === "the board");
        }

        function test_aNotificationThatIsOpenedLeadsToItsItemUnderNoPage() {
            Bed.makeOnBoard();
            open();
            hangNote();
            window.showPage("settings");
            tryVerify(() => focused() !== "the board");
            Bed.openNotification();
            window.showBoard();
            tryVerify(() => focused() === "the board");
            compare(Bed.editor.selected.itemId, Bed.items()[0]);
        }

        function test_tabComesToEverythingInTheDock() {
            Bed.makeOnBoard();
            open();
            const dock = ["a note", "a photo", "a sticker", "doodle", "a countdown", "a block together", "their window", "their music", "both clocks", "their day", "paper colour", "the two of you", "settings", "keys and gestures"];
            compare(walk(), ["the board"].concat(dock));
        }

        function test_spaceGoesToWhatCanBeDoneWithAnItem() {
            const verbs = ["paper and pin", "read", "edit", "let it go after a day", "a heart on it", "to the front", "to the back", "lock", "take down"];
            Bed.makeOnBoard();
            open();
            hangNote();
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Space);
            compare(walk(verbs.length + 1), verbs.concat("a note"));
            comeTo("take down", Qt.Key_Backtab);
            keyClick(Qt.Key_Escape);
            compare(focused(), "the board");
            keyClick(Qt.Key_Space);
            comeTo("take down");
            keyClick(Qt.Key_Return);
            compare(Bed.items(), []);
            compare(focused(), "the board");
        }

        function test_tabComesFromTheTextToItsLetters() {
            Bed.makeOnBoard();
            open();
            hangNote();
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
            compare(walk(5), ["the note's text", "bold", "italic", "underline", "strike"]);
            comeTo("done");
            keyClick(Qt.Key_Return);
            compare(focused(), "the board");
        }

        function test_thePencilCaseIsReachedAndLeft() {
            Bed.makeOnBoard();
            open();
            keyClick(Qt.Key_D);
            const names = walk();
            for (const name of Theme.inks().concat("fine", "pen", "brush", "eraser", "let it go", "stick it up"))
                verify(names.includes(name), name);
            comeTo("let it go");
            keyClick(Qt.Key_Return);
            compare(focused(), "the board");
        }
    }
}
