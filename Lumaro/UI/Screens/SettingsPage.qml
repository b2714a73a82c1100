// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What people may set for this computer.
Sheet {
    id: page

    required property AppView view
    required property SettingsView settings
    required property MusicView music
    required property PlaceView place
    /// The screens there are, a list model with the roles `name` and `isShown`, which is written.
    required property var screens
    /// Whether this desktop lets the board hang behind its icons.
    required property bool hangsBehindIcons

    title: qsTr("settings")
    paperWidth: 560

    Section {
        heading: qsTr("on the desktop")
        isFirst: true

        Toggle {
            width: parent.width
            text: qsTr("show the board on the desktop")
            helper: page.hangsBehindIcons ? qsTr("behind the icons; clicks go through it.") : qsTr("this desktop keeps its own picture in front, so our board hangs just behind your windows.")
            checked: page.view.face.showsOnDesktop
            onClicked: page.view.setShowsOnDesktop(checked)
        }
        Repeater {
            model: page.view.face.showsOnDesktop ? page.screens : null

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
            width: parent.width
            text: qsTr("open at login")
            helper: page.settings.fault === "" ? qsTr("so it hangs there when you come in.") : page.settings.fault
            checked: page.settings.opensAtLogin
            onClicked: page.settings.opensAtLogin = checked
        }
    }
    MusicSection {
        music: page.music
    }
    PlaceSection {
        place: page.place
    }
    HoursSection {
        view: page.view
        place: page.place
    }
    Section {
        heading: qsTr("telling you")

        Toggle {
            width: parent.width
            text: qsTr("when they pin something")
            helper: qsTr("a quiet note from them, like a text.")
            checked: page.settings.notifiesOfItems
            onClicked: page.settings.notifiesOfItems = checked
        }
        Toggle {
            width: parent.width
            text: qsTr("when a block is over")
            helper: qsTr("with cool down and rest, where the desktop can.")
            checked: page.settings.notifiesOfBlocks
            onClicked: page.settings.notifiesOfBlocks = checked
        }
        Toggle {
            width: parent.width
            text: qsTr("sounds")
            helper: qsTr("a glass rings when a block ends.")
            checked: page.settings.playsSounds
            onClicked: page.settings.playsSounds = checked
        }
    }
    Section {
        heading: qsTr("how it looks")

        Flow {
            width: parent.width
            spacing: Theme.size.small
            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("appearance")

            Chip {
                checkable: true
                checked: page.settings.appearance === "follow"
                text: qsTr("like the system")
                onClicked: page.settings.appearance = "follow"
            }
            Chip {
                checkable: true
                checked: page.settings.appearance === "light"
                text: qsTr("by day")
                onClicked: page.settings.appearance = "light"
            }
            Chip {
                checkable: true
                checked: page.settings.appearance === "dark"
                text: qsTr("by lamplight")
                onClicked: page.settings.appearance = "dark"
            }
        }
        Flow {
            width: parent.width
            spacing: Theme.size.small
            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("temperatures")

            Chip {
                checkable: true
                checked: page.settings.temperatureUnit === "follow"
                text: qsTr("like the system")
                Accessible.name: qsTr("temperatures like the system")
                onClicked: page.settings.temperatureUnit = "follow"
            }
            Chip {
                checkable: true
                checked: page.settings.temperatureUnit === "celsius"
                text: "°C"
                onClicked: page.settings.temperatureUnit = "celsius"
            }
            Chip {
                checkable: true
                checked: page.settings.temperatureUnit === "fahrenheit"
                text: "°F"
                onClicked: page.settings.temperatureUnit = "fahrenheit"
            }
        }
        Toggle {
            width: parent.width
            enabled: !page.settings.reducesMotion
            text: qsTr("let rain and snow fall")
            helper: page.settings.reducesMotion ? qsTr("not as long as there is less motion.") : qsTr("behind the windows, while you look.")
            checked: page.settings.weatherMoves
            onClicked: page.settings.weatherMoves = checked
        }
        Toggle {
            width: parent.width
            text: qsTr("less motion")
            helper: qsTr("things fade instead of springing.")
            checked: page.settings.reducesMotion
            onClicked: page.settings.reducesMotion = checked
        }
    }
    HomeSection {
        home: page.view.home
    }
    Body {
        width: parent.width
        isSmall: true
        isSoft: true
        text: qsTr("weather by open-meteo.com, place names by geonames.org, both CC BY 4.0. the weather is asked for by your room; where it has none, by this computer.")
    }
    Body {
        width: parent.width
        isSmall: true
        isSoft: true
        text: "lumaro " + page.view.version
    }
}
