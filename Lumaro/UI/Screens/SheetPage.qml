// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// One page of a sheet, its parts in a column.
FocusScope {
    default property alias parts: column.data

    width: parent ? parent.width : 0
    implicitHeight: column.implicitHeight

    Column {
        id: column

        width: parent.width
        spacing: Theme.size.large
    }
}
