// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Widgets

/// Everything on the board, one delegate for each row.
Item {
    id: canvas

    required property var rows
    required property BoardFrame frame

    Repeater {
        model: canvas.rows

        BoardItemView {
            frame: (parent as BoardCanvas)?.frame ?? null
        }
    }
}
