// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// How the letters of a note look. It takes no focus from the text.
Rectangle {
    id: bar

    required property NoteComposer composer

    signal done

    width: row.implicitWidth + 2 * Theme.size.tiny
    height: row.implicitHeight + 2 * Theme.size.tiny
    radius: Theme.size.radius
    color: Theme.color.raised
    border.width: 1
    border.color: Theme.color.edge
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("letters")

    Shadow {
        radius: bar.radius
        lift: 6
    }

    MouseArea {
        anchors.fill: parent
    }

    component Mark: IconButton {
        required property NoteComposer composer
        required property string mark

        checkable: true
        focusPolicy: Qt.TabFocus
        onClicked: composer.toggle(mark)
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 2

        Mark {
            composer: bar.composer
            mark: "bold"
            text: qsTr("bold")
            hint: "Ctrl B"
            iconName: "bold"
            checked: bar.composer.isBold
        }
        Mark {
            composer: bar.composer
            mark: "italic"
            text: qsTr("italic")
            hint: "Ctrl I"
            iconName: "italic"
            checked: bar.composer.isItalic
        }
        Mark {
            composer: bar.composer
            mark: "underline"
            text: qsTr("underline")
            hint: "Ctrl U"
            iconName: "underline"
            checked: bar.composer.isUnderlined
        }
        Mark {
            composer: bar.composer
            mark: "strike"
            text: qsTr("strike")
            hint: "Ctrl Shift X"
            iconName: "strikethrough"
            checked: bar.composer.isStruck
        }
        Swatches {
            readonly property list<string> stored: ["", "#b5472f", "#4f7a55", "#3f6f93", "#7a4c84"]

            names: [qsTr("the paper's ink"), qsTr("red"), qsTr("green"), qsTr("blue"), qsTr("plum")]
            colors: [bar.composer.ink, stored[1], stored[2], stored[3], stored[4]]
            chosen: names[stored.indexOf(bar.composer.color)] ?? ""
            onChose: name => bar.composer.setColor(stored[names.indexOf(name)])
        }
        IconButton {
            text: qsTr("done")
            hint: "Esc"
            iconName: "check"
            focusPolicy: Qt.TabFocus
            onClicked: bar.done()
        }
    }
}
