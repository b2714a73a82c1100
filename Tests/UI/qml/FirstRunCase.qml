// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Lumaro.UI
import Lumaro.Testing

/// A person at the first page, before each case, with the room's answers and words for what hands do there.
TestCase {
    id: walk

    required property Item room
    property var sheet

    readonly property string board: '{"coupleId":"q3m7xk2p","token":"lm1.q3m7xk2p.a.nbswy3dpo5xxe3de","invite":{"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12","expiresAt":1900000000000}}'
    readonly property string link: '{"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12","expiresAt":1900000000000}'
    readonly property string joined: '{"coupleId":"q3m7xk2p","token":"lm1.q3m7xk2p.b.nbswy3dpo5xxe3de","partnerName":"ann","slot":"b","status":"joined"}'
    readonly property string choose: '{"code":"choose_person","message":"","names":{"a":"ann","b":"bo"},"suggested":"b"}'

    when: windowShown

    Component {
        id: firstRun

        FirstRun {
            view: Bed.view
        }
    }

    function init() {
        Bed.make();
        open();
    }
    function open() {
        sheet = createTemporaryObject(firstRun, walk.room);
        tryCompare(sheet, "opened", true);
    }
    function type(text) {
        for (const key of text)
            keyClick(key);
    }
    function focusedName() {
        return walk.room.Window.activeFocusItem.Accessible.name;
    }
    function checkNames() {
        verify(Bed.reached(sheet.contentItem) > 0);
        compare(Bed.unnamed(sheet.contentItem), []);
    }
    function comeTo(door) {
        while (focusedName() !== door)
            keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Return);
    }
    function shows(item, text) {
        return item.visible && (item.text === text || Array.from(item.children).some(child => shows(child, text)));
    }
}
