// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    EditorCase {
        name: "EditorGroup"
        room: room

        property var notes: []

        function hangThree() {
            notes = [hangNote(300, 300), hangNote(800, 300), hangNote(1300, 700)];
        }
        function shiftClick(x, y) {
            const at = place(x, y);
            mouseClick(page, at.x, at.y, Qt.LeftButton, Qt.ShiftModifier);
        }
        function centers() {
            return notes.map(id => [Math.round(center(id).x), Math.round(center(id).y)]);
        }

        function test_whatIsShiftClickedMovesAsOneAndIsTakenBackAsOne() {
            hangThree();
            const before = centers();
            click(300, 300);
            shiftClick(800, 300);
            compare(Bed.editor.members, [notes[0], notes[1]]);
            pull(Qt.point(800, 300), Qt.point(900, 350));
            compare(Bed.acts(), 1);
            fuzzyCompare(center(notes[0]).x, 400, 3);
            fuzzyCompare(center(notes[0]).y, 350, 3);
            compare(center(notes[1]).x - center(notes[0]).x, 500);
            compare(centers()[2], before[2]);
            // A click into a group takes one out of it.
            click(400, 350);
            compare(Bed.editor.selected.itemId, notes[0]);
            shiftClick(400, 350);
            verify(!Bed.editor.selected.isThere);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(centers(), before);
        }

        function test_aLassoFromTheGlassGathersAndShiftAdds() {
            hangThree();
            pull(Qt.point(40, 40), Qt.point(900, 400));
            compare(Bed.editor.members, [notes[0], notes[1]]);
            compare(Bed.editor.selected.count, 2);
            verify(named("2 things"));
            const [from, to] = [place(1100, 500), place(1500, 900)];
            mousePress(page, from.x, from.y, Qt.LeftButton, Qt.ShiftModifier);
            mouseMove(page, from.x + 20, from.y + 20);
            mouseMove(page, to.x, to.y);
            mouseRelease(page, to.x, to.y, Qt.LeftButton, Qt.ShiftModifier);
            compare(Bed.editor.members, notes);
            keyClick(Qt.Key_Escape);
            compare(Bed.editor.members, []);
            compare(Bed.acts(), 0);
        }

        function test_theFrameTurnsAndResizesAllAboutTheirMiddle() {
            hangThree();
            keyClick(Qt.Key_A, Qt.ControlModifier);
            const frame = named("turn").parent;
            const middle = Qt.point(Bed.editor.selected.centerX, Bed.editor.selected.centerY);
            const reach = frame.width / 2 / board.pointScale;
            const high = frame.height / 2 / board.pointScale;
            pull(Qt.point(middle.x + reach, middle.y + high), Qt.point(middle.x + reach * 0.8, middle.y + high * 0.8));
            compare(Bed.acts(), 1);
            for (const id of notes)
                fuzzyCompare(Bed.item(id).scale, 0.8, 0.01);
            fuzzyCompare(center(notes[0]).x, middle.x + (300 - middle.x) * 0.8, 3);
            keyPress(Qt.Key_R);
            keyPress(Qt.Key_R);
            keyRelease(Qt.Key_R);
            compare(Bed.acts(), 2);
            compare(notes.map(id => Bed.item(id).rotationDegrees), [4, 4, 4]);
        }

        function test_keysActOnAllOfThem_data() {
            const [nudged, down] = [[301, 300], [800, 301]];
            return [["arrows", () => keyClick(Qt.Key_Right), () => compare(centers()[0], nudged)], ["plus", () => keyClick(Qt.Key_Plus), () => fuzzyCompare(Bed.item(notes[1]).scale, 1.08, 0.001)], ["back", () => {
                    keyClick(Qt.Key_A, Qt.ControlModifier);
                    Bed.editor.toggle(notes[0]);
                    keyClick(Qt.Key_B);
                }, () => verify(Bed.item(notes[2]).z < Bed.item(notes[0]).z)], ["once more", () => keyClick(Qt.Key_D, Qt.ControlModifier), () => compare([Bed.items().length, Bed.editor.members.length], [6, 3])], ["delete", () => keyClick(Qt.Key_Delete), () => compare(Bed.items(), [])], ["lock", () => keyClick(Qt.Key_L), () => compare(notes.map(id => Bed.item(id).locked), [true, true, true])]].map(([tag, act, check]) => ({
                        tag: tag,
                        act: act,
                        check: check
                    }));
        }
        function test_keysActOnAllOfThem(data) {
            hangThree();
            keyClick(Qt.Key_A, Qt.ControlModifier);
            data.act();
            data.check();
            compare(Bed.acts(), 1);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(Bed.items().length, 3);
            compare(centers(), [[300, 300], [800, 300], [1300, 700]]);
            verify(!Bed.item(notes[0]).locked);
        }

        function test_keysGatherAGroupAsTheyWalk() {
            hangThree();
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Space, Qt.ControlModifier);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Tab);
            compare(Bed.editor.walkedTo, notes[2]);
            compare(Bed.editor.selected.itemId, notes[0]);
            keyClick(Qt.Key_Space, Qt.ShiftModifier);
            compare(Bed.editor.members, [notes[0], notes[2]]);
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Space, Qt.ControlModifier);
            compare(Bed.editor.members.length, 3);
            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_Tab);
            compare(Bed.editor.selected.itemId, notes[0]);
        }

        function test_whatIsLockedStaysWhereItIs() {
            hangThree();
            click(300, 300);
            keyClick(Qt.Key_L);
            verify(Bed.item(notes[0]).locked);
            verify(!named("turn"));
            // A drag from it is a lasso, which leaves it out, and so does everything else.
            pull(Qt.point(300, 340), Qt.point(1500, 900));
            compare(Bed.editor.selected.itemId, notes[2]);
            keyClick(Qt.Key_A, Qt.ControlModifier);
            compare(Bed.editor.members, [notes[1], notes[2]]);
            click(300, 300);
            for (const key of [Qt.Key_Right, Qt.Key_Delete, Qt.Key_F, Qt.Key_H, Qt.Key_D, Qt.Key_Return]) {
                keyClick(key);
                verify(named("it's locked — unlock it first"), key);
                verify(!Bed.editor.isDoodling && !Bed.editor.isWriting);
            }
            compare(Bed.acts(), 1);
            press("unlock");
            verify(!Bed.item(notes[0]).locked);
            keyClick(Qt.Key_Delete);
            compare(Bed.items().length, 2);
        }

        function test_aHeartIsOneClick() {
            hangThree();
            click(300, 300);
            press("a heart on it");
            keyClick(Qt.Key_H);
            compare(kinds(), ["note", "note", "note", "doodle", "doodle"]);
            compare(Bed.item(Bed.items()[4]).payload.on, notes[0]);
            compare(Bed.editor.selected.itemId, notes[0]);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(Bed.items().length, 4);
        }
    }
}
