// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A button on a bar over the board. A click does not take the keyboard focus from the board.
IconButton {
    focusPolicy: Qt.TabFocus
}
