// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Every token and every control in all of its states on one page, for people who work on the look.
Rectangle {
    implicitWidth: 1200
    implicitHeight: page.implicitHeight + 2 * Theme.size.huge
    color: Theme.color.surface

    Column {
        id: page

        x: Theme.size.huge
        y: Theme.size.huge
        width: parent.width - 2 * Theme.size.huge
        spacing: Theme.size.huge

        GalleryTokens {
            width: parent.width
        }
        GalleryControls {
            width: parent.width
        }
    }
}
