// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What is written under a photo.
Sheet {
    id: sheet

    required property EditorView editor

    function edit(): void {
        caption.text = editor.selected.text;
        open();
        caption.forceActiveFocus();
        caption.selectAll();
    }

    function finish(): void {
        editor.setCaption(caption.text);
        close();
    }

    title: qsTr("a word under it")
    paperWidth: 420

    Field {
        id: caption

        width: parent.width
        label: qsTr("caption")
        placeholder: qsTr("that evening at the lake")
        maximumLength: 80
        onAccepted: sheet.finish()
    }
    PaperButton {
        anchors.right: parent.right
        kind: PaperButton.Primary
        text: qsTr("done")
        onClicked: sheet.finish()
    }
}
