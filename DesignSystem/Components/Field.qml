// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem

/// A line to write on, under its label. Below it a word of help, or what is wrong with what was written.
FocusScope {
    id: field

    property alias text: input.text
    property alias maximumLength: input.maximumLength
    property alias readOnly: input.readOnly
    property string label
    property string placeholder
    property string helper
    property string fault

    signal accepted
    signal edited

    /// The keys go here; what is typed takes the place of what stands here.
    function takeKeys(): void {
        forceActiveFocus(Qt.TabFocusReason);
        input.selectAll();
    }
    function selectAll(): void {
        input.selectAll();
    }

    implicitWidth: 320
    implicitHeight: column.implicitHeight

    Column {
        id: column

        width: parent.width
        spacing: 6

        Body {
            visible: field.label !== ""
            width: parent.width
            text: field.label
            isSmall: true
            isSoft: true
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        T.TextField {
            id: input

            width: parent.width
            implicitHeight: 44
            leftPadding: 14
            rightPadding: 14
            verticalAlignment: TextInput.AlignVCenter
            focus: true
            activeFocusOnTab: true
            selectByMouse: true
            clip: true
            color: Theme.color.ink
            selectionColor: Theme.color.accent
            selectedTextColor: Theme.color.onAccent
            font.family: Theme.sans
            font.pixelSize: Theme.size.bodyText + 1
            Accessible.role: Accessible.EditableText
            Accessible.name: field.label === "" ? field.placeholder : field.label
            Accessible.description: field.fault === "" ? field.helper : field.fault
            onAccepted: field.accepted()
            onTextEdited: field.edited()
            onActiveFocusChanged: {
                if (activeFocus && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason))
                    selectAll();
            }

            background: Rectangle {
                radius: Theme.size.radius - 2
                color: Theme.color.raised
                border.width: input.activeFocus ? 2 : 1
                border.color: input.activeFocus || field.fault !== "" ? Theme.color.accent : Theme.color.line
            }

            Text {
                visible: input.text === "" && input.preeditText === ""
                anchors.fill: parent
                anchors.leftMargin: input.leftPadding
                verticalAlignment: Text.AlignVCenter
                text: field.placeholder
                color: Theme.color.softInk
                elide: Text.ElideRight
                textFormat: Text.PlainText
                font: input.font
            }
        }
        Body {
            visible: text !== ""
            width: parent.width
            text: field.fault === "" ? field.helper : field.fault
            color: field.fault === "" ? Theme.color.softInk : Theme.color.accent
            isSmall: true
        }
    }
}
