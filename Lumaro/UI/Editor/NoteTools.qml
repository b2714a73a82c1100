// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What can be done with a note alone: when it comes down, its paper and pin, reading it and its links.
Row {
    id: tools

    required property EditorView editor
    readonly property selectedItem item: editor.selected

    /// The note is to be read large; a link in it is to be opened.
    signal readWanted
    signal linkWanted

    visible: item.kind === "note"
    spacing: 2

    Body {
        visible: tools.item.comesDown !== ""
        height: Theme.size.control
        leftPadding: Theme.size.small
        rightPadding: Theme.size.tiny
        verticalAlignment: Text.AlignVCenter
        text: tools.item.comesDown
        wrapMode: Text.NoWrap
        color: Theme.color.softInk
        font.pixelSize: Theme.size.captionText
    }
    BarTool {
        id: look

        visible: !tools.item.isLocked
        text: qsTr("paper and pin")
        iconName: "palette"
        onClicked: picker.openNear(look)

        LookPicker {
            id: picker

            paper: tools.item.paper
            pin: tools.item.pin
            onChosePaper: name => tools.editor.setPaper(name)
            onChosePin: name => tools.editor.setPin(name)
            onClosed: look.forceActiveFocus(Qt.PopupFocusReason)
        }
    }
    BarTool {
        text: qsTr("read")
        hint: "V"
        iconName: "book-open"
        onClicked: tools.readWanted()
    }
    BarTool {
        visible: tools.item.hasLinks
        text: qsTr("open a link")
        hint: "O"
        iconName: "link"
        onClicked: tools.linkWanted()
    }
}
