// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Something that cannot be taken back: asked once before it is done.
Item {
    id: act

    required property string text
    required property string question
    required property string yes
    property string iconName
    property bool isAsking: false

    signal agreed

    /// The keys go back to what was asked about.
    function end(): void {
        isAsking = false;
        ask.forceActiveFocus(Qt.TabFocusReason);
    }

    width: parent ? parent.width : 0
    implicitHeight: isAsking ? question.implicitHeight + 2 * Theme.size.medium : ask.implicitHeight

    PaperButton {
        id: ask

        x: -Theme.size.medium
        visible: !act.isAsking
        kind: PaperButton.Quiet
        iconName: act.iconName
        text: act.text
        onClicked: {
            act.isAsking = true;
            stay.forceActiveFocus(Qt.TabFocusReason);
        }
    }
    Rectangle {
        visible: act.isAsking
        anchors.fill: parent
        radius: Theme.size.radius
        color: Theme.color.pressed
    }
    Column {
        id: question

        visible: act.isAsking
        x: Theme.size.large
        y: Theme.size.medium
        width: parent.width - 2 * Theme.size.large
        spacing: Theme.size.medium
        Keys.onEscapePressed: act.end()

        Body {
            width: parent.width
            text: act.question
        }
        Flow {
            width: parent.width
            spacing: Theme.size.medium

            PaperButton {
                kind: PaperButton.Primary
                text: act.yes
                onClicked: {
                    act.end();
                    act.agreed();
                }
            }
            PaperButton {
                id: stay

                text: qsTr("no, leave it")
                onClicked: act.end()
            }
        }
    }
}
