// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Where the board is to live, in a line, and the way to say otherwise.
Flow {
    id: line

    required property HomeView home

    signal elsewhereAsked

    width: parent ? parent.width : 0
    spacing: Theme.size.small

    Body {
        height: elsewhere.height
        width: Math.min(implicitWidth, line.width)
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideMiddle
        isSmall: true
        isSoft: true
        text: qsTr("on %1").arg(line.home.face.server)
    }
    PaperButton {
        id: elsewhere

        kind: PaperButton.Quiet
        text: qsTr("somewhere else")
        onClicked: line.elsewhereAsked()
    }
}
