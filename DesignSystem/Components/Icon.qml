// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A line icon by its name, in a colour of its own.
Image {
    required property string name
    property color ink: Theme.color.ink
    property real side: 20

    width: side
    height: side
    sourceSize.width: side
    sourceSize.height: side
    source: "image://icon/" + name + "?" + ink.toString().slice(-6)
    smooth: true
}
