// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The board in a window, to be edited, and the pages over it.
Window {
    id: window

    required property AppView view
    required property BoardScene scene
    required property EditorView editor
    required property PictureExchange pictures
    required property SettingsView settings
    required property MusicView music
    required property PlaceView place
    required property PartnerSpeech speech
    required property var screens
    required property DesktopView desktop
    property alias weatherMoves: page.weatherMoves

    /// Opens a page: "settings", "boardPage", "hanging" or "help".
    function showPage(name: string): void {
        if (name === "help")
            page.sheets.help();
        else
            ((name === "settings" ? settingsPage : name === "hanging" ? hangsHere : boardPage).create() as Sheet).open();
    }

    /// The board without a page over it.
    function showBoard(): void {
        for (const opened of [boardPage, settingsPage])
            (opened.instance as Sheet)?.close();
    }

    // On a screen that has room for them; `WindowKeeper` sees to the others.
    width: 1180
    height: 780
    minimumWidth: 780
    minimumHeight: 480
    title: view.face.isOnBoard && view.face.hasPartner ? qsTr("lumaro · you and %1").arg(view.face.partnerName) : "lumaro"
    color: Theme.color.room

    EditorPage {
        id: page

        anchors.fill: parent
        focus: true
        scene: window.scene
        editor: window.editor
        pictures: window.pictures
        music: window.music
        place: window.place
        weatherMoves: window.settings.weatherMoves
        isQuiet: window.view.face.needsPerson
        onBoardPageWanted: window.showPage("boardPage")
        onSettingsWanted: window.showPage("settings")
    }

    StatusSlip {
        id: slip

        view: window.view
        // The handles of an item under it are to be seen; it takes no clicks.
        opacity: FrameRoom.areNear(page.reach, Qt.rect(x, y, width, height), 0) ? 0.25 : 0.94
        anchors {
            top: parent.top
            topMargin: Theme.size.medium
            horizontalCenter: parent.horizontalCenter
        }
    }

    // A page that closes gives the keyboard focus back to what had it, or to the board.
    OnDemand {
        sourceComponent: FirstRun {}
        properties: ({
                view: window.view
            })
        isWanted: window.view.face.needsPerson
        onClosed: page.giveKeysBack()
    }

    OnDemand {
        id: hangsHere

        sourceComponent: HangsHere {}
        properties: ({
                view: window.view,
                settings: window.settings,
                desktop: window.desktop
            })
        isWanted: window.desktop.isToBeTold && window.view.face.isOnBoard && !window.view.face.needsPerson
        onClosed: page.giveKeysBack()
    }

    OnDemand {
        sourceComponent: InviteQuestion {}
        properties: ({
                view: window.view
            })
        isWanted: window.view.face.inviteQuestion.isAsked
        onClosed: page.giveKeysBack()
    }

    OnDemand {
        id: boardPage

        sourceComponent: BoardPage {}
        properties: ({
                view: window.view
            })
        onClosed: page.giveKeysBack()
    }

    OnDemand {
        id: settingsPage

        sourceComponent: SettingsPage {}
        properties: ({
                view: window.view,
                settings: window.settings,
                music: window.music,
                place: window.place,
                screens: window.screens,
                desktop: window.desktop
            })
        onClosed: page.giveKeysBack()
    }

    Connections {
        target: window.view

        function onNoticed(text: string): void {
            page.toast.show(text, "");
        }
    }

    SpokenLine {
        id: spoken
    }

    Connections {
        target: window.speech

        function onSpoke(text: string): void {
            spoken.say(text);
        }
    }
}
