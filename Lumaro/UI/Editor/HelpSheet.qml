// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// All keys and gestures on one paper, in as many columns as it has room for.
Sheet {
    id: sheet

    readonly property int count: Math.max(1, Math.min(3, Math.floor(availableWidth / 270)))
    /// The parts in their order, each column about as long as the others.
    readonly property var columns: {
        const parts = Array.from(table.parts);
        const heights = parts.map(part => part.lines.length + 1.5);
        const each = heights.reduce((sum, height) => sum + height, 0) / count;
        const columns = Array.from({
            length: count
        }, () => ({
                    width: (availableWidth - (count - 1) * Theme.size.huge) / count,
                    parts: []
                }));
        let above = 0;
        for (const [at, part] of parts.entries()) {
            columns[Math.min(count - 1, Math.floor((above + heights[at] / 2) / each))].parts.push(part);
            above += heights[at];
        }
        return columns;
    }

    title: qsTr("keys and gestures")
    paperWidth: 980
    onOpened: text.forceActiveFocus(Qt.PopupFocusReason)

    KeysAndGestures {
        id: table
    }

    Row {
        id: text

        width: parent.width
        spacing: Theme.size.huge
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: sheet.title

        Repeater {
            model: sheet.columns

            Column {
                id: column

                required property var modelData

                width: modelData.width
                spacing: Theme.size.large

                Repeater {
                    model: column.modelData.parts

                    HelpGroup {
                        required property var modelData

                        width: parent?.width ?? 0
                        heading: modelData.heading
                        lines: modelData.lines
                    }
                }
            }
        }
    }
}
