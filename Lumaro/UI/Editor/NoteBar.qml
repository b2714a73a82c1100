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
            hint: qsTr("Ctrl B")
            iconName: "bold"
            checked: bar.composer.isBold
        }
        Mark {
            composer: bar.composer
            mark: "italic"
            text: qsTr("italic")
            hint: qsTr("Ctrl I")
            iconName: "italic"
            checked: bar.composer.isItalic
        }
        Mark {
            composer: bar.composer
            mark: "underline"
            text: qsTr("underline")
            hint: qsTr("Ctrl U")
            iconName: "underline"
            checked: bar.composer.isUnderlined
        }
        Mark {
            composer: bar.composer
            mark: "strike"
            text: qsTr("strike")
            hint: qsTr("Ctrl Shift X")
            iconName: "strikethrough"
            checked: bar.composer.isStruck
        }
        Swatches {
            // As a note stores them; "" is the paper's own.
            names: ["", "#b5472f", "#4f7a55", "#3f6f93", "#7a4c84"]
            labels: [qsTr("the paper's ink"), qsTr("red"), qsTr("green"), qsTr("blue"), qsTr("plum")]
            colors: [bar.composer.ink, names[1], names[2], names[3], names[4]]
            chosen: bar.composer.color
            onChose: name => bar.composer.setColor(name)
        }
        IconButton {
            text: qsTr("done")
            hint: qsTr("Esc")
            iconName: "check"
            focusPolicy: Qt.TabFocus
            onClicked: bar.done()
        }
    }
}
