// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    EditorCase {
        name: "EditorHands"
        room: room

        function test_aDragMovesOneItemAsOneAct() {
            const [moved, other] = [hangNote(400, 400), hangNote(1100, 400)];
            pull(Qt.point(380, 380), Qt.point(580, 480));
            fuzzyCompare(center(moved).x, 600, 3);
            fuzzyCompare(center(moved).y, 500, 3);
            compare(Bed.item(moved).rotationDegrees, 0);
            compare(center(other), {
                x: 1100,
                y: 400
            });
            compare(Bed.acts(), 1);
            click(380, 100);
            compare(Bed.acts(), 1);
        }

        function test_theTopHandleTurnsInSteps() {
            const id = hangNote(700, 500);
            click(700, 500);
            const [handle, middle] = [named("turn"), place(700, 500)];
            const top = handle.mapToItem(page, handle.width / 2, handle.height / 2);
            mousePress(page, top.x, top.y);
            mouseMove(page, top.x + 5, top.y);
            // Five degrees and a half about the middle.
            mouseMove(page, middle.x + (middle.y - top.y) * Math.tan(5.5 * Math.PI / 180), top.y);
            mouseRelease(page, top.x, top.y + 1);
            compare(Bed.item(id).rotationDegrees % 2, 0);
            compare(Bed.item(id).rotationDegrees, 6);
            compare(center(id).x, 700);
        }

        function test_aCornerAndTheWheelResize() {
            const id = hangNote(700, 500);
            click(700, 500);
            const frame = named("turn").parent;
            const [middle, reach] = [place(700, 500), frame.width / 2];
            const corner = factor => ({
                        x: 700 + factor * reach / board.pointScale,
                        y: 500 + factor * reach / board.pointScale
                    });
            pull(corner(1), corner(1.5));
            fuzzyCompare(Bed.item(id).scale, 1.5, 0.02);
            const now = frame.width / 2 / reach;
            pull(corner(now), corner(now * 1.03 / 1.5));
            compare(Bed.item(id).scale, 1);
            mouseWheel(page, middle.x, middle.y, 0, 480);
            tryVerify(() => Bed.acts() === 3, 2000);
            fuzzyCompare(Bed.item(id).scale, Math.pow(1.04, 4), 0.01);
        }

        function test_aDoubleClickWritesOnANote() {
            const id = hangNote(700, 500, {
                type: "text",
                text: "buy"
            }, {
                type: "text",
                text: " oranges",
                marks: [
                    {
                        type: "sparkle",
                        attrs: {
                            grade: 3
                        }
                    }
                ]
            });
            const at = place(700, 500);
            mouseDoubleClickSequence(page, at.x, at.y);
            tryVerify(() => focused() === "the note's text");
            keyClick(Qt.Key_Home, Qt.ControlModifier);
            keyClick(Qt.Key_B, Qt.ControlModifier);
            keyClick(Qt.Key_End, Qt.ControlModifier);
            keys("!");
            keyClick(Qt.Key_Escape);
            compare(texts(id)[0].marks, [
                {
                    type: "bold"
                }
            ]);
            compare(texts(id)[1].marks[0].attrs.grade, 3);
            compare(texts(id).map(text => text.text).join(""), "buy oranges!");
            compare(focused(), "the board");
        }

        function test_tabReadsTheBoardAndThenLeavesIt() {
            const [right, below, left] = [hangNote(1100, 300), hangNote(500, 760), hangNote(400, 310)];
            for (const id of [left, right, below]) {
                keyClick(Qt.Key_Tab);
                compare(Bed.editor.selected.itemId, id);
            }
            keyClick(Qt.Key_Backtab);
            compare(Bed.editor.selected.itemId, right);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Tab);
            verify(!Bed.editor.selected.isThere);
            compare(focused(), "a note");
        }

        function test_arrowsNudgeAndAreTakenBackAsOne() {
            const id = hangNote(700, 500);
            keyClick(Qt.Key_Tab);
            keyPress(Qt.Key_Right);
            keyPress(Qt.Key_Right);
            keyRelease(Qt.Key_Right);
            keyClick(Qt.Key_Down, Qt.ShiftModifier);
            compare(center(id), {
                x: 702,
                y: 510
            });
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(center(id), {
                x: 700,
                y: 500
            });
        }
    }
}
