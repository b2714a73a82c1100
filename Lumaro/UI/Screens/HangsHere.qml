// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Told once, when the board is there for the first time: that it hangs on the desktop and opens at login, each with the
/// switch that ends it for good.
Sheet {
    id: sheet

    required property AppView view
    required property SettingsView settings
    required property DesktopView desktop

    title: ""
    paperWidth: 520
    visible: desktop.isToBeTold
    onClosed: desktop.beTold()

    SheetPage {
        focus: true

        Column {
            width: parent.width
            spacing: Theme.size.small

            HandText {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: qsTr("it's there when you are")
                isLarge: true
            }
            Body {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                isSoft: true
                text: qsTr("two things we've set up for you. keep them, or don't.")
            }
        }
        Toggle {
            width: parent.width
            text: sheet.view.face.showsOnDesktop ? qsTr("it hangs on your desktop") : qsTr("it doesn't hang on your desktop")
            helper: sheet.desktop.words
            checked: sheet.view.face.showsOnDesktop
            onClicked: sheet.view.setShowsOnDesktop(checked)
        }
        Toggle {
            width: parent.width
            text: sheet.settings.opensAtLogin ? qsTr("it opens when you log in") : qsTr("it doesn't open when you log in")
            helper: sheet.settings.fault === "" ? qsTr("quietly, without a window.") : sheet.settings.fault
            checked: sheet.settings.opensAtLogin
            onClicked: sheet.settings.opensAtLogin = checked
        }
        PaperButton {
            width: parent.width
            focus: true
            kind: PaperButton.Primary
            text: qsTr("all right")
            onClicked: sheet.close()
        }
    }
}
