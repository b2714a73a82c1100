// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import DesignSystem
import Lumaro.UI
import Lumaro.Testing

// Every page in a language of longer words, in the smallest window that there may be. Long for a test: it is one table, with
// a row for each state of the windows that has texts.
Item {
    id: room

    width: 900
    height: 600

    Component {
        id: boardWindow

        BoardWindow {
            width: minimumWidth
            height: minimumHeight
            view: Bed.view
            scene: Bed.scene
            editor: Bed.editor
            pictures: Bed.pictures
            settings: Bed.settings
            music: Bed.music
            place: Bed.place
            speech: Bed.speech
            screens: screenList
            hangsBehindIcons: false
        }
    }
    ListModel {
        id: screenList

        ListElement {
            name: "left"
            isShown: true
        }
    }
    Component {
        id: quickNote

        QuickNote {
            focus: true
        }
    }
    Component {
        id: question

        InviteQuestion {
            view: Bed.view
        }
    }

    TestCase {
        name: "Language"
        when: windowShown

        property BoardWindow window

        // What people wrote, numbers, keys, and names of things.
        readonly property var own: ["ann?|bo|left|right", "[A-Za-z?]", "[0-9 ·:/-]+", "°[CF]", "alfama|lisbo[an]|zzzz|Lisboa  ·  .*", "https://\\S+|/profile|board.example", "lumaro .*", "the train", "that evening", "(mon|tue|wed|thu|fri|sat|sun)", "([a-z]+day, )?([0-9]+ )?[a-z]+ [0-9]{4}"]
        readonly property string board: '{"coupleId":"q3m7xk2p","token":"lm1.q3m7xk2p.a.nbswy3dpo5xxe3de","invite":{"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12","expiresAt":1900000000000}}'
        readonly property string joined: '{"coupleId":"q3m7xk2p","token":"lm1.q3m7xk2p.b.nbswy3dpo5xxe3de","partnerName":"ann","slot":"b","status":"joined"}'
        readonly property string choose: '{"code":"choose_person","message":"","names":{"a":"ann","b":"bo"},"suggested":"b"}'

        function initTestCase() {
            Bed.speakPseudo(true);
            Theme.isMotionReduced = true;
        }
        function cleanupTestCase() {
            Bed.speakPseudo(false);
        }

        function open() {
            window = createTemporaryObject(boardWindow, room);
            window.show();
            window.requestActivate();
            tryVerify(() => window.active && window.activeFocusItem);
        }
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
        function onBoard() {
            Bed.makeOnBoard();
            open();
        }
        function hang(kind, payload) {
            Bed.hang({
                kind: kind,
                center: {
                    x: 700,
                    y: 500
                },
                payload: payload
            });
            keyClick(Qt.Key_Tab);
            verify(Bed.editor.selected.isThere);
        }
        function hangPhoto() {
            hang("photo", {
                mediaId: "00000000-0000-4000-8000-000000000001",
                caption: "that evening"
            });
        }
        function hangNote() {
            hang("note", {
                pm: {
                    type: "doc"
                },
                paper: "butter",
                pin: "brass"
            });
        }
        function chooseDoor(door) {
            const sheet = find(window.contentItem, item => item instanceof ComeInPage || item instanceof WelcomePage);
            sheet.doorChosen(door);
        }

        function checkTexts(root) {
            // Lists and popups are laid out some frames after they were made.
            for (let frame = 0; frame < 20 && Bed.textFaults(root, own).length > 0; ++frame)
                wait(10);
            compare(Bed.textFaults(root, own), []);
        }

        function test_everyTextIsTranslatedAndHasRoom_data() {
            const pages = {
                welcome: [2, () => {
                        Bed.make();
                        open();
                    }],
                start: [3, () => {
                        Bed.make();
                        open();
                        chooseDoor("start");
                    }],
                code: [3, () => {
                        Bed.make();
                        open();
                        chooseDoor("code");
                        Bed.view.joinByCode("111111");
                        Bed.answer(404, '{"code":"code_not_found","message":""}');
                        verify(Bed.view.face.failure !== "");
                    }],
                link: [3, () => {
                        Bed.make();
                        open();
                        chooseDoor("link");
                    }],
                where: [4, () => {
                        Bed.makeNowhere();
                        open();
                        chooseDoor("start");
                    }],
                address: [4, () => {
                        Bed.makeNowhere();
                        open();
                        Bed.view.joinByCode("123456");
                        Bed.view.home.check("192.168.1.4:7700");
                        Bed.answer(200, '{"room":"lumaro","v":1}');
                    }],
                working: [3, () => {
                        Bed.make();
                        open();
                        chooseDoor("start");
                        Bed.view.startOurBoard();
                    }],
                bringThemOver: [4, () => {
                        Bed.make();
                        open();
                        Bed.view.startOurBoard();
                        Bed.answer(201, board);
                        Bed.answer(201, '{"code":"481936","expiresAt":1790000540000,"slot":"b"}');
                    }],
                theyAreOver: [3, () => {
                        Bed.make();
                        open();
                        Bed.view.startOurBoard();
                        Bed.answer(201, board);
                        Bed.partnerComes("bo");
                    }],
                whichOfYou: [3, () => {
                        Bed.make();
                        open();
                        Bed.view.joinByCode("123456");
                        Bed.answer(409, choose);
                    }],
                locked: [3, () => {
                        Bed.makeLocked();
                        open();
                    }],
                noKeyring: [3, () => {
                        Bed.makeWithoutKeyring();
                        open();
                        Bed.view.startOurBoard();
                        Bed.answer(201, board);
                        compare(Bed.view.face.stage, "asksForFile");
                    }],
                offBoard: [3, () => {
                        Bed.makeOnBoard();
                        Bed.view.leaveBoard();
                        open();
                    }],
                refused: [3, () => {
                        Bed.makeOnBoard();
                        Bed.refuse();
                        open();
                    }],
                failure: [2, () => {
                        onBoard();
                        Bed.view.joinByCode("111111");
                        Bed.view.acceptInvite(true);
                        Bed.answer(404, '{"code":"code_not_found","message":""}');
                        verify(Bed.view.face.failure !== "");
                    }],
                askedByCode: [4, () => {
                        onBoard();
                        Bed.view.joinByCode("111111");
                    }],
                clocks: [5, () => {
                        onBoard();
                        hang("timezones", {
                            units: "celsius"
                        });
                        find(window.contentItem, item => item instanceof SelectionBar).hoursWanted();
                    }],
                emptyBoard: [1, () => onBoard()],
                offline: [1, () => {
                        onBoard();
                        Bed.breakLine();
                        Bed.editor.putUpText("the train");
                    }],
                joined: [1, () => {
                        Bed.make();
                        Bed.view.joinByCode("123456");
                        Bed.answer(200, joined);
                        open();
                        verify(Bed.view.face.greeting !== "");
                    }],
                note: [1, () => {
                        onBoard();
                        hangNote();
                    }],
                block: [3, () => {
                        onBoard();
                        hang("pomodoro", {
                            minutes: 25,
                            phase: "resting"
                        });
                    }],
                writing: [1, () => {
                        onBoard();
                        hangNote();
                        keyClick(Qt.Key_Return);
                    }],
                menu: [7, () => {
                        onBoard();
                        hangNote();
                        keyClick(Qt.Key_Menu);
                    }],
                blockMenu: [7, () => {
                        onBoard();
                        hang("pomodoro", {
                            minutes: 25,
                            phase: "resting"
                        });
                        keyClick(Qt.Key_Menu);
                    }],
                pen: [4, () => {
                        onBoard();
                        keyClick(Qt.Key_D);
                    }],
                letInkGo: [3, () => {
                        onBoard();
                        Bed.editor.pen.begin("");
                        Bed.editor.pen.down(Qt.point(300, 300), 0, -1);
                        keyClick(Qt.Key_Delete);
                        verify(find(window.contentItem, item => item instanceof LetInkGo));
                    }],
                group: [1, () => {
                        onBoard();
                        hangNote();
                        hangNote();
                        keyClick(Qt.Key_A, Qt.ControlModifier);
                        verify(Bed.editor.selected.count === 2);
                    }],
                lockedItem: [3, () => {
                        onBoard();
                        hangNote();
                        keyClick(Qt.Key_L);
                        keyClick(Qt.Key_Menu);
                    }],
                countdown: [5, () => {
                        onBoard();
                        hang("countdown", {
                            targetDate: 1800000000000,
                            label: "the train"
                        });
                        keyClick(Qt.Key_Return);
                    }],
                caption: [3, () => {
                        onBoard();
                        hangPhoto();
                        keyClick(Qt.Key_C);
                    }],
                photoMenu: [7, () => {
                        onBoard();
                        hangPhoto();
                        keyClick(Qt.Key_Menu);
                    }],
                large: [3, () => {
                        onBoard();
                        hangPhoto();
                        keyClick(Qt.Key_Return);
                        Bed.pictures.large.saveTo("/nowhere/at/all.jpg");
                        Bed.pass(0);
                        verify(Bed.pictures.large.said !== "");
                    }],
                cutOut: [6, () => {
                        onBoard();
                        Bed.putUpSticker(Bed.picture());
                        tryVerify(() => Bed.pictures.cutOut.isOpen);
                    }],
                boardPage: [8, () => {
                        onBoard();
                        window.showPage("boardPage");
                    }],
                leaving: [8, () => {
                        onBoard();
                        window.showPage("boardPage");
                        find(window.contentItem, item => {
                            if (item instanceof AskOnce)
                                item.isAsking = true;
                            return false;
                        });
                        verify(find(window.contentItem, item => item instanceof AskOnce && item.isAsking));
                    }],
                settings: [10, () => {
                        onBoard();
                        window.showPage("settings");
                    }],
                sharing: [12, () => {
                        onBoard();
                        Bed.music.share(true);
                        window.showPage("settings");
                        find(window.contentItem, item => {
                            if (item instanceof MusicSection)
                                item.isAsking = true;
                            return false;
                        });
                        verify(find(window.contentItem, item => item instanceof MusicQuestion));
                    }],
                music: [3, () => {
                        onBoard();
                        Bed.partnerPlays("the train", "ann");
                        hang("nowPlayingSlot", {
                            slot: "b"
                        });
                    }],
                ownMusic: [4, () => {
                        onBoard();
                        hang("nowPlayingSlot", {
                            slot: "a"
                        });
                        find(window.contentItem, item => item instanceof SelectionBar).sharingWanted();
                    }],
                place: [8, () => {
                        onBoard();
                        Bed.partnerIsInLisbon();
                        hang("location", {
                            slot: "b"
                        });
                        keyClick(Qt.Key_Return);
                    }],
                placeUnknown: [2, () => {
                        onBoard();
                        hang("location", {
                            slot: "b"
                        });
                        keyClick(Qt.Key_Return);
                    }],
                placeQuestion: [7, () => {
                        onBoard();
                        hang("location", {
                            slot: "a"
                        });
                        keyClick(Qt.Key_Return);
                    }],
                ownPlace: [14, () => {
                        onBoard();
                        Bed.place.share(true);
                        Bed.answerPosition("here");
                        hang("location", {
                            slot: "a"
                        });
                        keyClick(Qt.Key_Return);
                    }],
                placeByHand: [14, () => {
                        onBoard();
                        Bed.place.share(true);
                        Bed.place.choices.typed = "lisb";
                        Bed.place.choose(0);
                        hang("location", {
                            slot: "a"
                        });
                        keyClick(Qt.Key_Return);
                    }],
                placeDenied: [9, () => {
                        onBoard();
                        Bed.place.share(true);
                        Bed.answerPosition("denied");
                        hang("location", {
                            slot: "a"
                        });
                        keyClick(Qt.Key_Return);
                        for (const letter of "zzzz")
                            keyClick(letter);
                    }],
                placeMenu: [5, () => {
                        onBoard();
                        hang("location", {
                            slot: "a"
                        });
                        keyClick(Qt.Key_Menu);
                    }],
                placeInSettings: [20, () => {
                        onBoard();
                        Bed.place.share(true);
                        Bed.answerPosition("restricted");
                        window.showPage("settings");
                        find(window.contentItem, item => {
                            if (item instanceof PlaceSection)
                                item.isAsking = true;
                            return false;
                        });
                        verify(find(window.contentItem, item => item instanceof PlaceQuestion));
                    }],
                ownMusicMenu: [7, () => {
                        onBoard();
                        hang("nowPlayingSlot", {
                            slot: "a"
                        });
                        keyClick(Qt.Key_Menu);
                    }],
                help: [30, () => {
                        onBoard();
                        keyClick(Qt.Key_F1);
                    }],
                dragging: [1, () => {
                        onBoard();
                        Bed.drag(find(window.contentItem, item => item instanceof EditorPage), Qt.point(300, 200), "text/plain", "ann");
                    }],
                notice: [1, () => {
                        onBoard();
                        Bed.view.exportBoard("file:///nowhere/at/all.json");
                    }],
                takenAway: [1, () => {
                        onBoard();
                        Bed.pictures.drop(["https://pictures.example/x.png"], Qt.point(100, 100));
                    }]
            };
            return Object.entries(pages).map(([page, [least, lay]]) => ({
                        tag: page,
                        least: least,
                        lay: lay
                    }));
        }
        function test_everyTextIsTranslatedAndHasRoom(data) {
            data.lay();
            tryVerify(() => Bed.textsSeen(window.contentItem) >= data.least);
            checkTexts(window.contentItem);
        }

        function test_windowsOfTheirOwn_data() {
            return [
                {
                    tag: "quick note",
                    made: quickNote
                },
                {
                    tag: "invite question",
                    made: question
                }
            ];
        }
        function test_windowsOfTheirOwn(data) {
            Bed.makeOnBoard();
            const made = createTemporaryObject(data.made, room);
            made.open?.();
            waitForRendering(room);
            const root = made.contentItem ?? made;
            verify(Bed.textsSeen(root) > 1);
            checkTexts(root);
        }
    }
}
