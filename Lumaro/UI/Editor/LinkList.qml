// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Web addresses, each with where it leads and a button that opens it.
Column {
    id: list

    required property EditorView editor
    required property var links

    signal wanted(link: string)

    spacing: Theme.size.large

    Repeater {
        model: list.links

        Column {
            id: entry

            required property string modelData
            readonly property LinkList owner: parent as LinkList
            readonly property string place: owner?.editor.placeOf(modelData) ?? ""

            width: parent?.width ?? 0
            spacing: Theme.size.tiny

            Body {
                width: parent.width
                text: entry.place
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
                Accessible.description: entry.place
                onClicked: entry.owner.wanted(entry.modelData)
            }
        }
    }
}
