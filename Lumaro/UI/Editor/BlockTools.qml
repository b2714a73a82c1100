// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Lumaro.UI

/// What can be done with the block together.
Row {
    id: tools

    required property EditorView editor
    readonly property selectedItem item: editor.selected

    visible: item.kind === "pomodoro" && (item.canJoin || item.canStart || item.canCoolDown || item.canRest)
    spacing: 2

    BarWord {
        visible: tools.item.canJoin
        text: qsTr("join")
        iconName: "users"
        onClicked: tools.editor.joinBlock()
    }
    BarWord {
        visible: tools.item.canStart
        text: qsTr("%n minutes", "", 15)
        onClicked: tools.editor.startBlock(15)
    }
    BarWord {
        visible: tools.item.canStart
        text: qsTr("%n minutes", "", 25)
        onClicked: tools.editor.startBlock(25)
    }
    BarWord {
        visible: tools.item.canStart
        text: qsTr("%n minutes", "", 50)
        onClicked: tools.editor.startBlock(50)
    }
    BarWord {
        visible: tools.item.canCoolDown
        text: qsTr("cool down")
        onClicked: tools.editor.coolDown()
    }
    BarWord {
        visible: tools.item.canRest
        text: qsTr("rest")
        onClicked: tools.editor.rest()
    }
}
