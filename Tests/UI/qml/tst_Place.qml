// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import DesignSystem
import Lumaro.UI
import Lumaro.Testing

Item {
    id: room

    width: 1024
    height: 768

    Component {
        id: settingsPage

        SettingsPage {
            parent: room
            view: Bed.view
            settings: Bed.settings
            music: Bed.music
            place: Bed.place
            screens: []
            desktop: Bed.desktop
        }
    }

    EditorCase {
        name: "Place"
        room: room

        /// Its sheet is opened by the keys.
        function openWindow(slot) {
            hang("location", 700, 400, {
                slot: slot
            });
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
        }
        function waitForFocus(name) {
            tryVerify(() => focused() === name, 2000, name);
        }
        function share() {
            Bed.place.share(true);
            Bed.answerPosition("here");
        }

        function test_nothingIsSharedBeforeAYesAndNoIsTheAnswerUnderTheKeys() {
            openWindow("a");
            tryVerify(() => named("they'll see your neighbourhood, never your address"));
            waitForFocus("no");
            keyClick(Qt.Key_Return);
            tryVerify(() => !named("no"));
            verify(Bed.place.isDecided && !Bed.place.isShared);
            waitForFocus("the board");
            keyClick(Qt.Key_Return);
            tryVerify(() => named("my block"));
            find(room.Window.contentItem, item => item instanceof Toggle).forceActiveFocus(Qt.TabFocusReason);
            waitForFocus("let it see where you are");
            keyClick(Qt.Key_Space);
            verify(Bed.place.isShared);
            compare(Bed.toldPosition(), "");
            Bed.answerPosition("here");
            tryVerify(() => named("lisboa"));
            compare(Bed.toldPosition(), "38.71 -9.14");
            verify(named("your neighbourhood, behind your side of the glass — never your address"));
        }

        function test_theQuestionCanBeAnsweredWithATown() {
            openWindow("a");
            waitForFocus("no");
            keyClick(Qt.Key_Backtab);
            waitForFocus("i'm in …");
            keyClick(Qt.Key_Return);
            keys("zzzz");
            verify(named("no town here begins like that. perhaps a larger one close by?"));
            for (let i = 0; i < 4; ++i)
                keyClick(Qt.Key_Backspace);
            keys("lisb");
            keyClick(Qt.Key_Down);
            waitForFocus("lisbon, portugal");
            keyClick(Qt.Key_Up);
            waitForFocus("i'm in …");
            verify(!Bed.place.isShared);
            keyClick(Qt.Key_Return);
            verify(Bed.place.isShared && Bed.place.isByHand);
            compare(Bed.toldPosition(), "38.72 -9.13");
            tryVerify(() => named("your clock stays on Europe/Berlin"));
            press("find it for me");
            verify(!Bed.place.isByHand);
        }

        function test_typingInTheListGoesOnInTheFieldAndEscapeLeavesThePickerAlone() {
            share();
            openWindow("a");
            press("i'm in …");
            waitForFocus("i'm in …");
            keys("lisb");
            keyClick(Qt.Key_Down);
            waitForFocus("lisbon, portugal");
            keyClick("o");
            compare(Bed.place.choices.typed, "lisbo");
            keyClick(Qt.Key_Down);
            waitForFocus("lisbon, portugal");
            keyClick(Qt.Key_Return);
            verify(Bed.place.isByHand);
            press("i'm in …");
            keys("porto");
            const porto = named("porto, portugal");
            waitForItemPolished(porto.parent);
            mouseClick(porto);
            compare(Bed.place.chosen, "porto, portugal");
            press("find it for me");
            Bed.answerPosition("here");
            press("i'm in …");
            keys("l");
            keyClick(Qt.Key_Escape);
            tryVerify(() => !named("towns"));
            tryVerify(() => named("my block"), 5000, "the sheet is still there");
            keyClick(Qt.Key_Escape);
            tryVerify(() => !named("my block"));
            verify(!Bed.place.isByHand);
        }

        function test_aPlaceGetsANameOfOnesOwnAndLosesIt() {
            share();
            openWindow("a");
            tryVerify(() => named("what do you call it here?"));
            for (const name of ["home", ""]) {
                mouseClick(find(room.Window.contentItem, item => item.Accessible.role === Accessible.EditableText));
                keyClick(Qt.Key_A, Qt.ControlModifier);
                keyClick(Qt.Key_Delete);
                keys(name);
                keyClick(Qt.Key_Return);
                compare(Bed.place.ownName, name);
                compare(Bed.place.told.label, name || "lisboa");
                tryVerify(() => !named("what do you call it here?"));
                keyClick(Qt.Key_Return);
                tryVerify(() => named("what do you call it here?"));
            }
        }

        function test_aClickOnAWindowThatIsOffOpensWhatHelps() {
            Bed.place.share(true);
            Bed.answerPosition("denied");
            hang("location", 700, 400, {
                slot: "a"
            });
            click(700, 400);
            tryVerify(() => named("location is off for this app"), 2000);
            waitForFocus("i'm in …");
            keys("lisb");
            keyClick(Qt.Key_Return);
            tryVerify(() => named("lisbon"));
            verify(!Bed.place.isOff);
        }

        function test_thePartnersWindowTellsAllThatIsKnown() {
            openWindow("b");
            tryVerify(() => named("waiting for a fix"));
            Bed.partnerIsInLisbon();
            tryVerify(() => named("alfama"));
            for (const line of ["rain, 17°, feels like 15°", "12° to 19° today  ·  a breeze from the west", "the weather of this moment"])
                verify(named(line), line);
            verify(!named("my block") && !named("let it see where you are"));
            Bed.pass(240);
            tryVerify(() => named("the weather of 3 minutes ago"));
        }

        function test_theSettingsAskInTheSameWords() {
            const settings = createTemporaryObject(settingsPage, room);
            settings.open();
            tryVerify(() => settings.opened);
            const toggle = named("let it see where you are");
            toggle.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            waitForFocus("no");
            verify(!toggle.checked && !Bed.place.isDecided);
            keyClick(Qt.Key_Escape);
            verify(settings.opened && toggle.activeFocus && !Bed.place.isDecided);
            keyClick(Qt.Key_Space);
            waitForFocus("no");
            keyClick(Qt.Key_Backtab);
            keyClick(Qt.Key_Backtab);
            waitForFocus("yes, find me");
            keyClick(Qt.Key_Return);
            verify(Bed.place.isShared && toggle.checked);
            Bed.answerPosition("here");
            tryVerify(() => named("lisboa"));
            const block = named("my block");
            block.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            verify(block.checked && !named("my neighbourhood").checked);
            for (let i = 0; i < 2; ++i) {
                keyClick(Qt.Key_Return);
                verify(block.checked, "one of them stays chosen");
            }
            compare(Bed.place.precision, "block");
            const fahrenheit = named("°F");
            fahrenheit.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            compare(Bed.settings.temperatureUnit, "fahrenheit");
            compare(Bed.unnamed(settings.contentItem).length, 0);
        }
    }
}
