// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    EditorCase {
        name: "EditorPen"
        room: room

        function line(y) {
            pull(Qt.point(400, y), Qt.point(600, y));
        }
        function strokes() {
            return Bed.item(Bed.items()[0]).payload.strokes;
        }

        function test_undoGoesStrokeByStrokeWhileThePenIsInTheHand() {
            press("a note");
            keys("oranges");
            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_D);
            line(400);
            line(600);
            for (let i = 0; i < 4; ++i)
                keyClick(Qt.Key_Z, Qt.ControlModifier);
            keyClick(Qt.Key_Z, Qt.ControlModifier | Qt.ShiftModifier);
            keyClick(Qt.Key_Escape);
            compare(kinds(), ["note", "doodle"]);
            compare(texts(Bed.items()[0])[0].text, "oranges");
            const drawn = Bed.item(Bed.items()[1]);
            compare(drawn.payload.strokes.length, 1);
            fuzzyCompare(drawn.center.y, 400, 3);
            compare(focused(), "the board");
        }

        function test_theBarTakesBackASweepAndANewSessionBeginsWithAPen() {
            keyClick(Qt.Key_D);
            line(400);
            keyClick(Qt.Key_E);
            pull(Qt.point(500, 300), Qt.point(500, 500));
            press("take the stroke back");
            press("draw it again");
            press("stick it up");
            compare(strokes().length, 2);
            keyClick(Qt.Key_D);
            line(700);
            keyClick(Qt.Key_Return);
            compare(kinds(), ["doodle", "doodle"]);
        }

        function test_inkIsThrownAwayOnlyWhenThatIsMeant() {
            keyClick(Qt.Key_D);
            press("let it go");
            tryVerify(() => !Bed.editor.isDoodling);
            keyClick(Qt.Key_D);
            line(400);
            press("let it go");
            tryVerify(() => focused() === "no, keep drawing");
            keyClick(Qt.Key_Escape);
            verify(Bed.editor.isDoodling);
            compare(focused(), "the glass, to draw on");
            keyClick(Qt.Key_Delete);
            press("yes, let it go");
            verify(!Bed.editor.isDoodling);
            compare(Bed.items(), []);
            compare(Bed.acts(), 0);
        }

        function test_aPensPressureIsTheWidthOfItsLine() {
            keyClick(Qt.Key_D);
            tryVerify(() => Bed.editor.isDoodling);
            // As wide as x is off its tenth.
            const widths = stroke => stroke.p.filter((_, i) => i % 2 === 0).map(x => Math.round(x * 100) - 10 * Math.round(x * 10));
            for (const [y, pressure] of [[300, 1], [500, 0]]) {
                const [start, end] = [place(400, y), place(700, y)];
                Bed.pressPen(page, start, pressure);
                mousePress(page, start.x, start.y);
                mouseMove(page, (start.x + end.x) / 2, start.y, 10);
                mouseMove(page, end.x, end.y, 10);
                mouseRelease(page, end.x, end.y);
            }
            keyClick(Qt.Key_Return);
            compare(widths(strokes()[0]).every(steps => steps === 4), true);
            compare(widths(strokes()[1]).every(steps => steps === -4), true);
        }
    }
}
