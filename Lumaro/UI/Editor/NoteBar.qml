// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// How the letters of a note look. It takes no focus from the text.
Rectangle {
    id: bar

    required property NoteComposer composer
    required property EditorView editor
    /// It breaks into lines where there is less room than it takes.
    property real room: 10000

    signal done
    signal keysLeft

    width: row.width + 2 * Theme.size.tiny
    height: row.height + 2 * Theme.size.tiny
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

    Flow {
        id: row

        readonly property real wanted: {
            let sum = -spacing;
            for (const child of children) {
                sum += child.width + spacing;
            }
            return sum;
        }

        x: Theme.size.tiny
        y: Theme.size.tiny
        width: Math.min(wanted, bar.room - 2 * Theme.size.tiny)
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
            names: [""].concat(Theme.textInks())
            labels: [qsTr("the paper's ink"), qsTr("red"), qsTr("rust"), qsTr("moss"), qsTr("green"), qsTr("lagoon"), qsTr("blue"), qsTr("night"), qsTr("plum"), qsTr("rose")]
            colors: names.map(name => bar.composer.inkOf(name))
            side: 30
            chosen: bar.composer.color
            onChose: name => bar.composer.setColor(name)
        }
        IconButton {
            id: look

            text: qsTr("paper and pin")
            iconName: "palette"
            focusPolicy: Qt.TabFocus
            onClicked: picker.openNear(look)

            LookPicker {
                id: picker

                paper: bar.editor.selected.paper
                pin: bar.editor.selected.pin
                onChosePaper: name => bar.editor.setPaper(name)
                onChosePin: name => bar.editor.setPin(name)
                onClosed: bar.keysLeft()
            }
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
