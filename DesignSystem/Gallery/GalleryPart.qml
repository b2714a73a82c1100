// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Some things of one kind, under the name of the kind.
Column {
    id: part

    required property string heading
    default property alias things: row.data

    width: parent ? parent.width : 0
    spacing: Theme.size.medium

    Title {
        text: part.heading
        isSmall: true
        color: Theme.color.softInk
    }
    Flow {
        id: row

        width: parent.width
        spacing: Theme.size.large
    }
}
