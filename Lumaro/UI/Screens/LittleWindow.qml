// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A sash window with light behind it.
Rectangle {
    id: frame

    required property color light

    component Pane: Rectangle {
        id: pane

        required property color light

        width: 24
        height: 30
        radius: 2
        antialiasing: true
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Qt.lighter(pane.light, 1.06)
            }
            GradientStop {
                position: 1
                color: Qt.darker(pane.light, 1.12)
            }
        }
    }

    width: 66
    height: 78
    radius: 6
    antialiasing: true
    color: Theme.color.raised
    border.width: 1
    border.color: Theme.color.line

    Shadow {
        radius: 6
        lift: 6
    }
    Grid {
        anchors.centerIn: parent
        columns: 2
        spacing: 4

        Pane {
            light: frame.light
        }
        Pane {
            light: frame.light
        }
        Pane {
            light: frame.light
        }
        Pane {
            light: frame.light
        }
    }
}
