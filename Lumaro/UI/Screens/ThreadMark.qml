// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Shapes
import DesignSystem
import Lumaro.UI

/// Two windows and the thread between them.
Item {
    width: 260
    height: 104

    LittleWindow {
        x: 16
        y: 12
        rotation: -4
        light: Theme.backgroundColor("sky")
    }
    LittleWindow {
        x: parent.width - width - 16
        y: 14
        rotation: 5
        light: Theme.backgroundColor("butter")
    }
    Shape {
        anchors.fill: parent

        ShapePath {
            strokeColor: Theme.color.accent
            strokeWidth: 2.5
            fillColor: "transparent"
            capStyle: ShapePath.RoundCap
            startX: 78
            startY: 62

            PathCubic {
                x: 130
                y: 66
                control1X: 92
                control1Y: 104
                control2X: 112
                control2Y: 92
            }
            PathCubic {
                x: 182
                y: 58
                control1X: 146
                control1Y: 42
                control2X: 166
                control2Y: 34
            }
        }
    }
    Rectangle {
        x: 74
        y: 58
        width: 8
        height: 8
        radius: 4
        color: Theme.color.accent
    }
    Rectangle {
        x: 178
        y: 54
        width: 8
        height: 8
        radius: 4
        color: Theme.color.accent
    }
}
