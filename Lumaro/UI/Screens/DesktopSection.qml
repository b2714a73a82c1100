// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Where the board hangs on this computer, and whether it is there after the login.
Section {
    id: section

    required property AppView view
    required property SettingsView settings
    required property DesktopView desktop
    /// The screens there are, a list model with the roles `name` and `isShown`, which is written.
    required property var screens
    readonly property bool isShown: view.face.showsOnDesktop

    heading: qsTr("on the desktop")

    Toggle {
        width: parent.width
        text: qsTr("show the board on the desktop")
        helper: section.desktop.words
        checked: section.isShown
        onClicked: section.view.setShowsOnDesktop(checked)
    }
    Repeater {
        model: section.isShown ? section.screens : null

        Toggle {
            required property var model

            x: Theme.size.large
            width: parent ? parent.width - x : 0
            text: model.name
            checked: model.isShown
            onClicked: model.isShown = checked
        }
    }
    Toggle {
        visible: section.isShown && section.desktop.isPictureOffered
        x: Theme.size.large
        width: parent.width - x
        text: qsTr("as the wallpaper")
        helper: section.desktop.pictureWords
        checked: section.desktop.isPicture
        onClicked: section.desktop.isPicture = checked
    }
    Toggle {
        visible: section.isShown && section.desktop.isPicture
        x: 2 * Theme.size.large
        width: parent.width - x
        text: qsTr("over my own picture")
        helper: qsTr("what hangs, without the paper.")
        checked: section.desktop.isOverOwn
        onClicked: section.desktop.isOverOwn = checked
    }
    Toggle {
        width: parent.width
        text: qsTr("open at login")
        helper: section.settings.fault === "" ? qsTr("so it hangs there when you come in.") : section.settings.fault
        checked: section.settings.opensAtLogin
        onClicked: section.settings.opensAtLogin = checked
    }
}
