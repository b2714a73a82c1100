// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Where the board lives. While this computer is on no board, it can be said anew.
Section {
    id: section

    required property HomeView home

    heading: qsTr("where our board lives")

    Body {
        width: parent.width
        wrapMode: Text.WrapAnywhere
        text: section.home.face.isSet ? section.home.face.server : qsTr("nowhere yet")
    }
    Toggle {
        // What a board lives on elsewhere is not offered here, and what runs can be switched off.
        visible: section.home.face.canKeepHere && (section.home.face.isChangeable || section.home.face.isKeptHere)
        width: parent.width
        enabled: !section.home.face.isStarting
        text: qsTr("this computer keeps it")
        helper: section.home.face.keeping
        checked: section.home.face.isKeptHere
        onClicked: section.home.keepHere(checked)
    }
    Body {
        visible: !section.home.face.isChangeable
        width: parent.width
        isSmall: true
        isSoft: true
        text: qsTr("it stays there for now: moving a board to another server comes later.")
    }
    AddressField {
        visible: section.home.face.isChangeable
        home: section.home
        yes: qsTr("our board lives there")
    }
}
