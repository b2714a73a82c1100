// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What people let their partner see of them. Music is shared only after they have read what that means.
Section {
    id: section

    required property MusicView music
    property bool isAsking: false

    heading: qsTr("what you share")

    Toggle {
        id: share

        width: parent.width
        text: qsTr("share what i'm listening to")
        helper: qsTr("the song, the artist, the cover; never the album or where it plays.")
        checked: section.music.isShared
        onClicked: {
            if (section.music.isDecided) {
                section.music.share(checked);
            } else {
                toggle();
                section.isAsking = true;
                question.takeKeys();
            }
        }
    }
    Rectangle {
        visible: section.isAsking
        width: parent.width
        height: question.implicitHeight + 2 * Theme.size.medium
        radius: Theme.size.radius
        color: Theme.color.pressed

        MusicQuestion {
            id: question

            x: Theme.size.large
            y: Theme.size.medium
            width: parent.width - 2 * Theme.size.large
            music: section.music
            onAnswered: {
                section.isAsking = false;
                share.forceActiveFocus(Qt.TabFocusReason);
            }
            Keys.onEscapePressed: {
                section.isAsking = false;
                share.forceActiveFocus(Qt.TabFocusReason);
            }
        }
    }
    Toggle {
        visible: section.music.isShared
        x: Theme.size.large
        width: parent.width - x
        text: qsTr("also from browsers")
        helper: qsTr("films and meetings have titles, too, and they would be seen.")
        checked: section.music.includesBrowsers
        onClicked: section.music.includesBrowsers = checked
    }
    Toggle {
        visible: section.music.isShared
        x: Theme.size.large
        width: parent.width - x
        text: qsTr("look for covers on the web")
        helper: qsTr("asks apple's catalogue about songs whose player shows no cover. apple then learns what you play.")
        checked: section.music.looksForCovers
        onClicked: section.music.looksForCovers = checked
    }
}
