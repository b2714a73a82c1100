// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import DesignSystem
import Widgets
import Lumaro.UI
import Lumaro.Testing

/// A person at an empty board, before each case, with words for what hands do there.
TestCase {
    id: bench

    required property Item room
    when: windowShown

    Component {
        id: editorPage

        EditorPage {
            width: bench.room.width
            height: bench.room.height
            scene: Bed.scene
            editor: Bed.editor
            pictures: Bed.pictures
            music: Bed.music
            place: Bed.place
        }
    }

    property EditorPage page
    property BoardView board

    function init() {
        Theme.isMotionReduced = true;
        Bed.makeOnBoard();
        page = createTemporaryObject(editorPage, room);
        board = Array.from(page.children).find(child => child instanceof BoardView);
        page.takeKeys();
    }

    // The board and what is on it.

    function paragraph(...texts) {
        return {
            type: "doc",
            content: [
                {
                    type: "paragraph",
                    content: texts
                }
            ]
        };
    }
    function hang(kind, x, y, payload) {
        return Bed.hang({
            kind: kind,
            center: {
                x: x,
                y: y
            },
            payload: payload
        });
    }
    function hangNote(x, y, ...texts) {
        return hang("note", x, y, {
            pm: paragraph(...texts),
            paper: "butter",
            pin: "brass"
        });
    }
    function place(x, y) {
        return Qt.point(board.canvas.viewX(x), board.canvas.viewY(y));
    }
    function center(id) {
        return Bed.item(id).center;
    }
    function texts(id) {
        return Bed.item(id).payload.pm.content[0].content;
    }
    function kinds() {
        return Bed.items().map(id => Bed.item(id).kind);
    }

    // Hands.

    function click(x, y, button = Qt.LeftButton) {
        const at = place(x, y);
        mouseClick(page, at.x, at.y, button);
    }
    function pull(from, to, then) {
        const [start, end] = [place(from.x, from.y), place(to.x, to.y)];
        mousePress(page, start.x, start.y);
        for (let step = 1; step <= 4; ++step)
            mouseMove(page, start.x + (end.x - start.x) * step / 4, start.y + (end.y - start.y) * step / 4);
        then?.();
        mouseRelease(page, end.x, end.y);
    }
    function keys(text) {
        for (const key of text)
            keyClick(key);
    }

    // What is in sight.

    function find(item, isMeant) {
        if (!item.visible)
            return null;
        if (isMeant(item))
            return item;
        for (let i = 0; i < item.children.length; ++i) {
            const found = find(item.children[i], isMeant);
            if (found)
                return found;
        }
        return null;
    }
    function named(name) {
        return find(room.Window.contentItem, item => item.Accessible.name === name);
    }
    function press(name) {
        tryVerify(() => named(name), 1000, name);
        waitForItemPolished(named(name).parent);
        mouseClick(named(name));
    }
    function focused() {
        return room.Window.activeFocusItem.Accessible.name;
    }
}
