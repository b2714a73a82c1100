// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// The same with a word.
Chip {
    focusPolicy: Qt.TabFocus
}
