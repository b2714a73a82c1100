// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What people let their partner see of where they are. It is shared only after they have read what that means.
Section {
    id: section

    required property PlaceView place
    property bool isAsking: false

    function endQuestion(): void {
        isAsking = false;
        share.forceActiveFocus(Qt.TabFocusReason);
    }

    heading: qsTr("where you are")

    Toggle {
        id: share

        width: parent.width
        text: qsTr("let it see where you are")
        helper: qsTr("your neighbourhood, behind your side of the glass — never your address")
        checked: section.place.isShared
        onClicked: {
            if (section.place.isDecided) {
                section.place.share(checked);
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

        PlaceQuestion {
            id: question

            x: Theme.size.large
            y: Theme.size.medium
            width: parent.width - 2 * Theme.size.large
            place: section.place
            onAnswered: section.endQuestion()
            Keys.onEscapePressed: section.endQuestion()
        }
    }
    PlaceHow {
        visible: section.place.isDecided
        x: Theme.size.large
        width: parent.width - x
        place: section.place
    }
    Body {
        visible: preview.visible
        x: Theme.size.large
        width: parent.width - x
        topPadding: Theme.size.small
        text: qsTr("they'll see your neighbourhood, never your address")
        font.weight: Font.DemiBold
    }
    PlaceLines {
        id: preview

        visible: words.isThere
        x: Theme.size.large
        width: parent.width - x
        words: section.place.told
    }
}
