// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What is counted down to, and when it is.
Sheet {
    id: sheet

    required property EditorView editor
    property bool isNew: true
    readonly property real moment: editor.momentFrom(day.text, time.text)

    function put(): void {
        isNew = true;
        label.text = "";
        fill(editor.inDays(7));
        open();
        label.forceActiveFocus();
    }

    function edit(): void {
        isNew = false;
        label.text = editor.selected.text;
        fill(editor.selected.targetMs);
        open();
        label.forceActiveFocus();
    }

    function fill(ms: real): void {
        day.text = editor.dayOf(ms);
        time.text = editor.timeOf(ms);
    }

    function finish(): void {
        if (isNaN(moment)) {
            return;
        }
        if (isNew) {
            editor.putUpCountdown(label.text, moment);
        } else {
            editor.setCountdown(label.text, moment);
        }
        close();
    }

    title: qsTr("how long still?")
    paperWidth: 440

    Field {
        id: label

        width: parent.width
        label: qsTr("until")
        placeholder: qsTr("the train to you")
        maximumLength: 60
        onAccepted: sheet.finish()
    }
    Row {
        width: parent.width
        spacing: Theme.size.medium

        Field {
            id: day

            width: (parent.width - parent.spacing) * 0.6
            label: qsTr("day")
            placeholder: "2026-12-24"
            fault: isNaN(sheet.moment) ? qsTr("a day like 2026-12-24") : ""
            onAccepted: sheet.finish()
        }
        Field {
            id: time

            width: (parent.width - parent.spacing) * 0.4
            label: qsTr("time")
            placeholder: "18:00"
            onAccepted: sheet.finish()
        }
    }
    Row {
        spacing: Theme.size.tiny

        Chip {
            text: qsTr("tomorrow")
            onClicked: sheet.fill(sheet.editor.inDays(1))
        }
        Chip {
            text: qsTr("in a week")
            onClicked: sheet.fill(sheet.editor.inDays(7))
        }
        Chip {
            text: qsTr("in a month")
            onClicked: sheet.fill(sheet.editor.inDays(30))
        }
    }
    PaperButton {
        anchors.right: parent.right
        kind: PaperButton.Primary
        text: sheet.isNew ? qsTr("hang it up") : qsTr("done")
        enabled: !isNaN(sheet.moment)
        onClicked: sheet.finish()
    }
}
