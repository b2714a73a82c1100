// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// What stands on a board on which nothing hangs.
HandText {
    width: Math.min(implicitWidth, parent.width - 2 * Theme.size.large)
    horizontalAlignment: Text.AlignHCenter
    color: Theme.color.softInk
    text: qsTr("nothing hangs here yet\npress n for a note, d to draw, or paste a photo")
}
