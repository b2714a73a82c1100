// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The board in a window, under one's hands, and the pages that lie over it.
Window {
    id: window

    required property AppView view
    required property BoardScene scene
    required property EditorView editor
    required property PictureDesk pictures
    required property SettingsView settings
    required property var screens
    required property bool hangsBehindIcons

    /// Opens a page: "settings" or "boardPage".
    function showPage(page: string): void {
        (page === "settings" ? settingsPage : boardPage).open();
    }

    width: 1180
    height: 780
    minimumWidth: 900
    minimumHeight: 600
    title: view.face.isOnBoard && view.face.hasPartner ? qsTr("lumaro · you and %1").arg(view.face.partnerName) : "lumaro"
    color: Theme.color.room

    EditorPage {
        id: page

        anchors.fill: parent
        focus: true
        scene: window.scene
        editor: window.editor
        pictures: window.pictures
        isQuiet: window.view.face.needsPerson
        onBoardPageWanted: boardPage.open()
        onSettingsWanted: settingsPage.open()
        onQuickNoteWanted: window.view.askForQuickNote()
    }

    StatusSlip {
        view: window.view
        anchors {
            top: parent.top
            topMargin: Theme.size.medium
            horizontalCenter: parent.horizontalCenter
        }
    }

    // What lay over the board gives the keys back to it.
    FirstRun {
        view: window.view
        onClosed: page.takeKeys()
    }

    BoardPage {
        id: boardPage

        view: window.view
        onClosed: page.takeKeys()
    }

    SettingsPage {
        id: settingsPage

        view: window.view
        onClosed: page.takeKeys()
        settings: window.settings
        screens: window.screens
        hangsBehindIcons: window.hangsBehindIcons
    }

    Connections {
        target: window.view

        property int notices: window.view.face.notices

        function onFaceChanged(): void {
            if (notices !== window.view.face.notices) {
                notices = window.view.face.notices;
                page.say(window.view.face.notice);
            }
        }
    }
}
