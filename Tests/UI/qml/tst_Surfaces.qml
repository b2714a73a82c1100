// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import DesignSystem
import Lumaro.UI
import Lumaro.Testing

// What lies over the board, and that it leaves what people work at uncovered.
Item {
    id: room

    width: 1200
    height: 900

    EditorCase {
        id: bench

        name: "Surfaces"
        room: room

        property Dock dock

        onPageChanged: dock = page ? find(page, item => item instanceof Dock) : null

        function resize(width, height) {
            page.width = width;
            page.height = height;
            wait(20);
        }
        function boxOf(item) {
            return item.mapToItem(page, Qt.rect(0, 0, item.width, item.height));
        }
        function areApart(one, other) {
            return one.x >= other.x + other.width || other.x >= one.x + one.width || one.y >= other.y + other.height || other.y >= one.y + one.height;
        }
        function handles() {
            const found = [];
            find(page, item => {
                if (item instanceof Handle)
                    found.push(item);
                return false;
            });
            return found;
        }
        function comeTo(name) {
            for (let step = 0; step < 60 && focused() !== name; ++step)
                keyClick(Qt.Key_Tab);
            compare(focused(), name);
        }

        function test_theDockIsWholeInAnyWindow_data() {
            return [[1024, 560, true], [800, 480, false], [1366, 700, true], [768, 1300, true], [600, 980, true], [560, 700, false], [480, 700, false]].map(([width, height, hasWords]) => ({
                        tag: width + " by " + height,
                        width: width,
                        height: height,
                        hasWords: hasWords
                    }));
        }
        function test_theDockIsWholeInAnyWindow(data) {
            resize(data.width, data.height);
            const shelf = boxOf(dock);
            verify(shelf.x >= 0 && shelf.x + shelf.width <= data.width, shelf.width);
            verify(shelf.y + shelf.height <= data.height);
            const tools = Array.from(["a note", "their day", "paper colour", "keys and gestures"], name => boxOf(named(name)));
            for (const tool of tools)
                verify(tool.x > shelf.x && tool.x + tool.width < shelf.x + shelf.width && tool.y > shelf.y && tool.y + tool.height < shelf.y + shelf.height);
            verify(areApart(tools[0], tools[2]) && areApart(tools[1], tools[3]));
            compare(dock.hasWords, data.hasWords);
        }

        function test_theDockStepsAsideForWhatIsUnderIt() {
            const low = hangNote(800, 960);
            hangNote(800, 300);
            click(800, 300);
            verify(!dock.isAside);
            click(800, 930);
            compare(Bed.editor.selected.itemId, low);
            mouseMove(page, 5, 5);
            tryVerify(() => boxOf(dock).y > page.height - 20);
            // Its lip brings it back, as long as the pointer is there.
            mouseMove(page, page.width / 2, page.height - 4);
            tryVerify(() => boxOf(dock).y + dock.height < page.height);
            press("both clocks");
            mouseMove(page, 5, 5);
            tryVerify(() => !dock.isAside);
            // It goes while something is carried there.
            pull(Qt.point(800, 300), Qt.point(800, 900), () => verify(dock.isAside));
        }

        function test_theBarCoversNoHandle_data() {
            const rows = [];
            for (const [x, y] of [[0, 0], [800, 0], [1600, 0], [0, 500], [800, 500], [1600, 500], [0, 1000], [800, 1000], [1600, 1000]]) {
                for (const [tilt, scale] of [[0, 1], [15, 1], [-15, 2]])
                    rows.push({
                        tag: [x, y, tilt, scale].join(" "),
                        x: x,
                        y: y,
                        tilt: tilt,
                        scale: scale
                    });
            }
            return rows;
        }
        function test_theBarCoversNoHandle(data) {
            const id = Bed.hang({
                kind: "note",
                center: {
                    x: data.x,
                    y: data.y
                },
                rotationDegrees: data.tilt,
                scale: data.scale,
                payload: {
                    pm: paragraph(),
                    paper: "butter",
                    pin: "brass"
                }
            });
            Bed.editor.select(id);
            const bar = find(page, item => item instanceof SelectionBar);
            waitForItemPolished(bar);
            const slip = boxOf(bar);
            verify(slip.x >= 0 && slip.y >= 0 && slip.x + slip.width <= page.width && slip.y + slip.height <= page.height, JSON.stringify(slip));
            compare(handles().length, 5);
            for (const handle of handles())
                verify(areApart(slip, boxOf(handle.children[0])));
            verify(dock.isAside || areApart(slip, boxOf(dock)));
        }

        function test_whatIsSaidLiesOverTheDock() {
            page.toast.show("they took it down", "put it back");
            const slip = named("they took it down");
            tryVerify(() => slip.y === 0 && boxOf(slip).y + slip.height <= dock.y);
            press("put it back");
        }

        function test_paperColoursCloseAsTheyCame() {
            comeTo("paper colour");
            keyClick(Qt.Key_Space);
            compare(focused(), "butter");
            keyClick(Qt.Key_Escape);
            verify(!named("sage"));
            compare(focused(), "paper colour");
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
            compare(page.scene.background, "blush");
            compare(focused(), "paper colour");
            click(800, 300);
            press("paper colour");
            tryVerify(() => named("sage"));
            click(200, 200);
            tryVerify(() => !named("sage"));
            compare(focused(), "the board");
            press("paper colour");
            tryVerify(() => named("sage"));
            press("paper colour");
            tryVerify(() => !named("sage"));
        }

        function test_theKeysGoOnWhenAnAnswerTakesItsButtonAway() {
            hang("location", 700, 400, {
                slot: "a"
            });
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
            tryVerify(() => focused() === "no");
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Backtab);
            compare(focused(), "yes, find me");
            keyClick(Qt.Key_Return);
            tryVerify(() => focused() === "let it see where you are", 1000, focused());
            keyClick(Qt.Key_Escape);
            tryVerify(() => focused() === "the board");
        }

        function test_helpComesByKeyDockAndMenu() {
            for (const ask of [() => keyClick("?"), () => keyClick(Qt.Key_F1), () => press("keys and gestures")]) {
                ask();
                tryVerify(() => named("Delete: take down"));
                keyClick(Qt.Key_Escape);
                tryVerify(() => !named("Delete: take down"));
                compare(focused(), "the board");
            }
            comeTo("keys and gestures");
            keyClick(Qt.Key_Return);
            tryVerify(() => named("Delete: take down"));
            keyClick(Qt.Key_Escape);
            tryVerify(() => focused() === "keys and gestures");
        }

        function test_lightComesInForWhatTheBoardCanTake_data() {
            return [["words", "text/plain", "buy oranges", "let go: the words become a note"], ["a picture", "text/uri-list", "file:///a/b.jpg", "let go: the picture hangs here"], ["pictures", "text/uri-list", "file:///a/b.jpg\r\nfile:///a/c.png", "let go: the pictures hang here"], ["a song", "text/uri-list", "file:///a/b.mp3", ""], ["one that is none", "text/uri-list", "file:///a/b.jpg\r\nfile:///a/c.zip", ""], ["a colour", "application/x-color", "red", ""]].map(([tag, type, data, words]) => ({
                        tag: tag,
                        type: type,
                        data: data,
                        words: words
                    }));
        }
        function test_lightComesInForWhatTheBoardCanTake(data) {
            compare(Bed.drag(page, place(500, 500), data.type, data.data), data.words !== "");
            if (data.words !== "")
                tryVerify(() => named(data.words));
            Bed.dragAway(page);
            tryVerify(() => !named(data.words || "the pane of light"));
            compare(Bed.items(), []);
        }
    }
}
