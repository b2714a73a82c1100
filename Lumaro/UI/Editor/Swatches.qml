// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// A row of colours to choose from, each with its name.
Row {
    id: row

    required property list<string> names
    /// What people call each.
    required property list<string> labels
    required property list<color> colors
    property string chosen
    /// Of the square in which each answers.
    property real side: Theme.size.control

    signal chose(name: string)

    Repeater {
        model: row.names

        Swatch {
            required property string modelData
            required property int index
            readonly property Swatches owner: parent as Swatches

            width: owner?.side ?? implicitWidth
            text: owner?.labels[index] ?? modelData
            swatch: owner?.colors[index] ?? "white"
            checked: owner?.chosen === modelData
            focusPolicy: Qt.TabFocus
            onClicked: owner.chose(modelData)
        }
    }
}
