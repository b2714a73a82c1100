// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What people let their partner know of their time: their time zone alone, and what they have seen. The zone is shared
/// only after they have read what that means.
Section {
    id: section

    required property AppView view
    required property PlaceView place
    property bool isAsking: false

    function endQuestion(): void {
        isAsking = false;
        share.forceActiveFocus(Qt.TabFocusReason);
    }

    heading: qsTr("our hours")

    Toggle {
        id: share

        width: parent.width
        text: qsTr("let them see your hours")
        helper: qsTr("your time zone alone, also without a place.")
        checked: section.place.sharesHours
        onClicked: {
            if (section.place.isHoursDecided) {
                section.place.shareHours(checked);
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

        HoursQuestion {
            id: question

            x: Theme.size.large
            y: Theme.size.medium
            width: parent.width - 2 * Theme.size.large
            place: section.place
            onAnswered: section.endQuestion()
            Keys.onEscapePressed: section.endQuestion()
        }
    }
    Toggle {
        width: parent.width
        text: qsTr("let them see what i've seen")
        helper: qsTr("“seen” beside what they put up; never when, or how often.")
        checked: section.view.face.sharesSeen
        onClicked: section.view.shareSeen(checked)
    }
}
