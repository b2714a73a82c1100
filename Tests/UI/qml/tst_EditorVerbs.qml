// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    EditorCase {
        name: "EditorVerbs"
        room: room

        function test_theKeysStayOnTheBoardWhenThePointerPressesAButton() {
            hangNote(700, 500);
            click(700, 500);
            press("take down");
            compare(Bed.items(), []);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(Bed.items().length, 1);
            press("both clocks");
            const before = center(Bed.items()[1]).x;
            keyClick(Qt.Key_Right);
            compare(center(Bed.items()[1]).x, before + 1);
        }

        function test_aDoodleIsDrawnErasedAndPutUp() {
            keyClick(Qt.Key_D);
            pull(Qt.point(400, 400), Qt.point(600, 400));
            pull(Qt.point(400, 600), Qt.point(600, 600));
            keyClick(Qt.Key_E);
            pull(Qt.point(380, 600), Qt.point(620, 600));
            keyClick(Qt.Key_Return);
            compare(kinds(), ["doodle"]);
            const drawn = Bed.item(Bed.items()[0]);
            compare(drawn.payload.strokes.length, 1);
            fuzzyCompare(drawn.center.y, 400, 3);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(Bed.items(), []);
        }

        function test_pointerAndMenuKeyOfferEverything_data() {
            return [["right click", () => click(700, 500, Qt.RightButton)], ["menu key", () => [Qt.Key_Tab, Qt.Key_Menu].forEach(key => keyClick(key))]].map(([tag, ask]) => ({
                        tag: tag,
                        ask: ask
                    }));
        }
        function test_pointerAndMenuKeyOfferEverything(data) {
            hangNote(700, 500);
            data.ask();
            tryVerify(() => named("once more"));
            for (const verb of ["edit", "let it go after a day", "draw on it", "a heart on it", "to the front", "to the back", "lock", "copy", "once more", "take down"]) {
                keyClick(Qt.Key_Down);
                compare(focused(), verb);
            }
            keyClick(Qt.Key_Return);
            compare(Bed.items(), []);
            tryVerify(() => !named("once more"));
            compare(focused(), "the board");
        }

        function test_whatIsTakenOutOfTheHandCanBePutBack() {
            const id = hangNote(400, 400);
            pull(Qt.point(400, 400), Qt.point(600, 500), () => {
                Bed.pass(1);
                Bed.partnerTakesDown(id);
                compare(Bed.items(), []);
            });
            press("put it back");
            compare(kinds(), ["note"]);
            fuzzyCompare(center(Bed.items()[0]).x, 600, 3);
        }

        function test_aBlockIsStartedAndJoined() {
            const id = hang("pomodoro", 700, 500, {
                minutes: 25,
                phase: "resting"
            });
            click(700, 500);
            press("15 minutes");
            compare(Bed.item(id).payload.minutes, 15);
            compare(Bed.item(id).payload.startedBy, "a");
            verify(!named("15 minutes"));
            Bed.pass(5);
            const theirs = Object.assign(Bed.item(id), {
                author: "b",
                updatedAt: Bed.item(id).updatedAt + 5000
            });
            theirs.payload.startedBy = "b";
            Bed.hang(theirs);
            press("join");
            verify(Bed.item(id).payload.joinedAt > 0);
            verify(!named("join"));
        }

        function type(text) {
            keyClick(Qt.Key_A, Qt.ControlModifier);
            keys(text);
        }
        function said(text) {
            return find(room.Window.contentItem, item => item.text === text) !== null;
        }

        function test_aCountdownIsTypedAndTheFieldThatIsWrongIsNamed() {
            press("a countdown");
            tryVerify(() => focused() === "until");
            keys("the train");
            keyClick(Qt.Key_Tab);
            compare(focused(), "day");
            for (const [day, fault] of [["soon", "a day like 24 dec, 2026-12-24 or friday"], ["2026-13-01", "there is no such day"]]) {
                type(day);
                keyClick(Qt.Key_Return);
                verify(said(fault), fault);
            }
            type("24 dec 2030");
            keyClick(Qt.Key_Tab);
            compare(focused(), "time");
            type("25:00");
            verify(said("no clock shows that") && !said("there is no such day"));
            keyClick(Qt.Key_Return);
            compare(Bed.items(), []);
            type("6:30 pm");
            verify(said("tuesday, 24 december 2030, at 18:30"));
            keyClick(Qt.Key_Return);
            compare(kinds(), ["countdown"]);
            compare(Bed.item(Bed.items()[0]).payload.label, "the train");
            compare(Bed.item(Bed.items()[0]).payload.targetDate, new Date(2030, 11, 24, 18, 30).getTime());
            tryVerify(() => focused() === "the board");
        }

        function test_aCountdownIsPickedFromTheMonthByKeysAndPointer() {
            hang("countdown", 700, 500, {
                targetDate: new Date(2031, 0, 30, 9, 0).getTime(),
                label: "x"
            });
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
            tryVerify(() => named("the month after"));
            tryVerify(() => named("thursday, 30 january 2031"));
            const month = find(room.Window.contentItem, item => item.Accessible.role === Accessible.Table);
            month.forceActiveFocus();
            keyClick(Qt.Key_PageDown);
            compare(focused(), "friday, 28 february 2031");
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Up);
            compare(focused(), "thursday, 20 february 2031");
            press("the month after");
            press("monday, 10 march 2031");
            named("hour 09").forceActiveFocus();
            keyClick(Qt.Key_Up);
            compare(focused(), "hour 10");
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Down);
            compare(focused(), "minute 55");
            press("done");
            compare(Bed.item(Bed.items()[0]).payload.targetDate, new Date(2031, 2, 10, 9, 55).getTime());
        }

        function test_aDayThatHasBeenIsSaid() {
            press("a countdown");
            tryVerify(() => focused() === "until");
            keyClick(Qt.Key_Tab);
            type("2020-02-03");
            verify(find(room.Window.contentItem, item => String(item.text).endsWith("that day has been.")));
            keyClick(Qt.Key_Return);
            compare(kinds(), ["countdown"]);
        }
    }
}
