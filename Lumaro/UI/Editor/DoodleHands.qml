// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Widgets
import Lumaro.UI

/// The pen or the eraser over the board.
FocusScope {
    id: hands

    required property BoardView board
    required property PenView pen
    required property DoodleBar bar

    Accessible.role: Accessible.Canvas
    Accessible.name: qsTr("the glass, to draw on")
    Accessible.description: qsTr("escape and enter stick the ink up")
    Keys.onEscapePressed: pen.finish()
    Keys.onReturnPressed: pen.finish()
    Keys.onEnterPressed: pen.finish()
    Keys.onDeletePressed: bar.letGoWanted()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_E) {
            bar.isErasing = !bar.isErasing;
            event.accepted = true;
        }
    }

    PenArea {
        property point last

        anchors.fill: parent
        onPressed: (place, seconds, pressure) => {
            hands.forceActiveFocus();
            last = hands.board.canvas.canvasPoint(place);
            if (hands.bar.isErasing) {
                hands.pen.erase(last, last, 14);
            } else {
                hands.pen.take(hands.bar.ink, hands.bar.penWidth);
                hands.pen.down(last, seconds, pressure);
            }
        }
        onMoved: (place, seconds, pressure) => {
            const there = hands.board.canvas.canvasPoint(place);
            if (hands.bar.isErasing) {
                hands.pen.erase(last, there, 14);
            } else {
                hands.pen.moveTo(there, seconds, pressure);
            }
            last = there;
        }
        onReleased: hands.pen.up()
    }
}
