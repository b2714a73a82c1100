// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Tells where a link in a note leads before it is opened.
Sheet {
    id: sheet

    required property EditorView editor
    property list<string> links

    function ask(found: list<string>): void {
        links = found;
        open();
        stay.forceActiveFocus(Qt.PopupFocusReason);
    }

    title: links.length > 1 ? qsTr("open one of these?") : qsTr("open this?")
    paperWidth: 480

    Repeater {
        model: sheet.links

        Column {
            id: entry

            required property string modelData

            width: parent?.width ?? 0
            spacing: Theme.size.tiny

            Body {
                width: parent.width
                text: sheet.editor.placeOf(entry.modelData)
                wrapMode: Text.WrapAnywhere
                font.weight: Font.ExtraBold
                font.pixelSize: Theme.size.titleText
            }
            Body {
                width: parent.width
                text: entry.modelData
                wrapMode: Text.WrapAnywhere
                maximumLineCount: 3
                elide: Text.ElideRight
                color: Theme.color.softInk
                font.pixelSize: Theme.size.captionText
            }
            PaperButton {
                kind: PaperButton.Primary
                iconName: "link"
                text: qsTr("open it")
                Accessible.description: sheet.editor.placeOf(entry.modelData)
                onClicked: {
                    sheet.close();
                    sheet.editor.openLink(entry.modelData);
                }
            }
        }
    }
    PaperButton {
        id: stay

        text: qsTr("no, leave it")
        onClicked: sheet.close()
    }
}
