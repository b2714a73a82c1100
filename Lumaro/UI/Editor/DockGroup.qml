// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Tools of the dock that belong together, in a row.
Row {
    id: group

    required property bool hasWords
    /// How wide it is with words, and without, whichever it shows.
    readonly property real wordyWidth: {
        let sum = -spacing;
        for (let i = 0; i < children.length; ++i)
            sum += ((children[i] as DockTool)?.wordyWidth ?? 0) + spacing;
        return sum;
    }
    readonly property real plainWidth: children.length * (Theme.size.control + spacing) - spacing

    spacing: Theme.size.tiny
}
