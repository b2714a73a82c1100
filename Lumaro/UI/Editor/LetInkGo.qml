// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Asks whether ink is to be thrown away.
Flow {
    id: question

    /// How much room there is, in points of the view.
    required property real room

    signal agreed
    signal stayed

    function takeKeys(): void {
        stay.forceActiveFocus(Qt.TabFocusReason);
    }

    readonly property real inOneRow: words.width + go.width + stay.width + 2 * spacing

    width: Math.min(inOneRow, room - 2 * (Theme.size.medium + Theme.size.large))
    spacing: Theme.size.small
    Keys.onEscapePressed: stayed()

    Body {
        id: words

        width: Math.min(implicitWidth, question.room - 2 * (Theme.size.medium + Theme.size.large))
        height: Math.max(implicitHeight, go.height)
        verticalAlignment: Text.AlignVCenter
        text: qsTr("throw this ink away?")
    }
    PaperButton {
        id: go

        text: qsTr("yes, let it go")
        onClicked: question.agreed()
    }
    PaperButton {
        id: stay

        kind: PaperButton.Primary
        text: qsTr("no, keep drawing")
        onClicked: question.stayed()
    }
}
