// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Tells where a link in a note leads before it is opened.
Sheet {
    id: sheet

    required property EditorView editor
    property var links: []

    function ask(found: var): void {
        links = found;
        open();
        stay.forceActiveFocus(Qt.PopupFocusReason);
    }

    title: links.length > 1 ? qsTr("open one of these?") : qsTr("open this?")
    paperWidth: 480

    LinkList {
        width: parent.width
        editor: sheet.editor
        links: sheet.links
        onWanted: link => {
            sheet.close();
            sheet.editor.openLink(link);
        }
    }
    PaperButton {
        id: stay

        text: qsTr("no, leave it")
        onClicked: sheet.close()
    }
}
