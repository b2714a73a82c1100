// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import DesignSystem
import Lumaro.UI
import Lumaro.Testing

Item {
    id: room

    width: 1200
    height: 900

    Component {
        id: boardPage

        BoardPage {
            view: Bed.view
        }
    }
    Component {
        id: settingsPage

        SettingsPage {
            view: Bed.view
            settings: Bed.settings
            music: Bed.music
            place: Bed.place
            desktop: Bed.desktop
            screens: screenList
        }
    }
    ListModel {
        id: screenList

        ListElement {
            name: "this screen"
            isShown: true
        }
    }
    TestCase {
        name: "Pages"
        when: windowShown

        function open(page) {
            const sheet = createTemporaryObject(page, room);
            sheet.open();
            tryCompare(sheet, "opened", true);
            verify(Bed.reached(sheet.contentItem) > 4);
            compare(Bed.unnamed(sheet.contentItem), []);
            return sheet;
        }
        function comeTo(name) {
            for (let step = 0; step < 40; ++step) {
                if (room.Window.activeFocusItem.Accessible.name === name)
                    return;
                keyClick(Qt.Key_Tab);
            }
            fail("the keys never came to " + name);
        }

        function test_leavingIsAskedOnce() {
            Bed.makeOnBoard();
            const sheet = open(boardPage);
            comeTo("leave the board");
            keyClick(Qt.Key_Return);
            verify(Bed.view.face.isOnBoard);
            compare(room.Window.activeFocusItem.Accessible.name, "no, leave it");
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Return);
            verify(!Bed.view.face.isOnBoard);
            tryCompare(sheet, "visible", false);
        }

        function test_theKeysComeBackFromAQuestion() {
            Bed.makeOnBoard();
            const sheet = open(boardPage);
            const focused = () => room.Window.activeFocusItem.Accessible.name;
            comeTo("leave the board");
            for (const answer of [Qt.Key_Escape, Qt.Key_Return]) {
                keyClick(Qt.Key_Return);
                compare(focused(), "no, leave it");
                keyClick(answer);
                compare(focused(), "leave the board");
            }
            comeTo("make a link");
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Return);
            compare(focused(), "make a link");
            sheet.close();
        }

        function test_aNewNameIsKept() {
            Bed.makeOnBoard();
            open(boardPage);
            comeTo("what do they call you?");
            for (const key of "zoe")
                keyClick(key);
            keyClick(Qt.Key_Return);
            compare(Bed.storedName(), "zoe");
        }

        function test_everySettingDoesSomething_data() {
            return ["notifiesOfItems", "notifiesOfBlocks", "playsSounds", "reducesMotion", "opensAtLogin"].map((setting, at) => ({
                        tag: setting,
                        control: ["when they pin something", "when a block is over", "sounds", "less motion", "open at login"][at]
                    }));
        }
        function test_everySettingDoesSomething(data) {
            Bed.make();
            const sheet = open(settingsPage);
            const before = Bed.settings[data.tag];
            comeTo(data.control);
            keyClick(Qt.Key_Space);
            compare(Bed.settings[data.tag], !before);
            sheet.close();
        }

        function test_theBoardIsTheWallpaperWhenItIsWishedAndNoLonger() {
            Bed.make();
            const sheet = open(settingsPage);
            for (const [control, setting] of [["as the wallpaper", "isPicture"], ["over my own picture", "isOverOwn"]]) {
                verify(!Bed.desktop[setting]);
                comeTo(control);
                keyClick(Qt.Key_Space);
                verify(Bed.desktop[setting]);
            }
            compare(Bed.desktop.words, "as the wallpaper, behind the icons.");
            verify(Bed.hangsAsWallpaper());
            comeTo("as the wallpaper");
            keyClick(Qt.Key_Space);
            verify(!Bed.desktop.isPicture && !Bed.hangsAsWallpaper());
            sheet.close();
        }

        function test_musicIsSharedOnlyAfterThePersonHasReadWhat() {
            Bed.make();
            const sheet = open(settingsPage);
            comeTo("share what i'm listening to");
            keyClick(Qt.Key_Space);
            verify(!Bed.music.isShared && !Bed.music.isDecided);
            compare(room.Window.activeFocusItem.Accessible.name, "no");
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Return);
            verify(Bed.music.isShared);
            for (const [control, setting] of [["also from browsers", "includesBrowsers"], ["look for covers on the web", "looksForCovers"]]) {
                verify(!Bed.music[setting]);
                comeTo(control);
                keyClick(Qt.Key_Space);
                verify(Bed.music[setting]);
            }
            comeTo("share what i'm listening to");
            keyClick(Qt.Key_Space);
            verify(!Bed.music.isShared);
            keyClick(Qt.Key_Space);
            verify(Bed.music.isShared);
            sheet.close();
        }

        function test_hoursAreSharedOnlyAfterThePersonHasReadWhat() {
            Bed.make();
            const sheet = open(settingsPage);
            comeTo("let them see your hours");
            keyClick(Qt.Key_Space);
            verify(!Bed.place.sharesHours);
            compare(room.Window.activeFocusItem.Accessible.name, "no");
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Return);
            verify(Bed.place.sharesHours);
            compare(room.Window.activeFocusItem.Accessible.name, "let them see your hours");
            keyClick(Qt.Key_Space);
            verify(!Bed.place.sharesHours);
            comeTo("let them see what i've seen");
            verify(!Bed.view.face.sharesSeen);
            keyClick(Qt.Key_Space);
            verify(Bed.view.face.sharesSeen);
            sheet.close();
        }

        function test_aResetLinkIsGoneAtOnce() {
            Bed.makeOnBoard();
            const sheet = open(boardPage);
            comeTo("make a link");
            keyClick(Qt.Key_Return);
            verify(Bed.answer(201, '{"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12","expiresAt":1900000000000}'));
            comeTo("make a code");
            keyClick(Qt.Key_Return);
            verify(Bed.answer(201, '{"code":"481936","expiresAt":1790000540000,"slot":"b"}'));
            compare(Bed.view.face.code, "481 936");
            comeTo("reset our link");
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Return);
            verify(Bed.lastRequest().startsWith("DELETE "));
            verify(Bed.answer(200, "{}"));
            compare(Bed.view.face.code, "");
            compare(Bed.view.face.link, "");
            verify(Bed.answer(201, '{"inviteId":"secondlink","link":"https://x/for/secondlink","expiresAt":1900000000000}'));
            compare(Bed.view.face.link, "https://x/for/secondlink");
            sheet.close();
        }

        function test_theThemeFollowsTheSettings() {
            Bed.make();
            Bed.settings.appearance = "dark";
            Bed.dress(Theme);
            verify(Theme.isDark);
            Bed.settings.appearance = "light";
            Bed.settings.reducesMotion = true;
            verify(!Theme.isDark);
            verify(Theme.isMotionReduced);
            Bed.settings.reducesMotion = false;
        }

        function test_aScreenIsChosen() {
            Bed.make();
            open(settingsPage);
            comeTo("this screen");
            keyClick(Qt.Key_Space);
            compare(screenList.get(0).isShown, false);
        }
    }
}
