// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Six digits as they are read out over the phone. Whatever else is typed or pasted between them is passed over.
FocusScope {
    id: field

    property string digits
    readonly property int count: 6
    property string label
    property string helper
    property string fault

    /// The last digit is there.
    signal completed(string digits)
    signal accepted
    signal edited

    function clear(): void {
        input.text = "";
        field.digits = "";
    }

    implicitWidth: 390
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
        Item {
            width: boxes.implicitWidth
            height: boxes.implicitHeight

            TextInput {
                id: input

                /// Where the next digit goes, or the last went; -1 without the keys.
                readonly property int next: activeFocus ? Math.min(field.digits.length, field.count - 1) : -1

                // Its text is drawn by the boxes.
                anchors.fill: parent
                opacity: 0
                focus: true
                activeFocusOnTab: true
                inputMethodHints: Qt.ImhDigitsOnly
                Accessible.role: Accessible.EditableText
                Accessible.name: field.label
                Accessible.description: field.fault === "" ? field.helper : field.fault
                onAccepted: field.accepted()
                onTextEdited: {
                    const digits = text.replace(/[^0-9٠-٩۰-۹०-९０-９]/g, "").slice(0, field.count);
                    const isNew = digits.length === field.count;
                    text = digits;
                    field.digits = digits;
                    field.edited();
                    if (isNew)
                        field.completed(digits);
                }
            }
            // The middle is left wider, as people say the digits in two threes.
            Row {
                id: boxes

                readonly property real boxWidth: Math.min(68, Math.floor((field.width - 4 - 6 * spacing) / 6))

                spacing: 8

                DigitBox {
                    width: boxes.boxWidth
                    digits: field.digits
                    place: 0
                    isNext: input.next === place
                    isFaulty: field.fault !== ""
                }
                DigitBox {
                    width: boxes.boxWidth
                    digits: field.digits
                    place: 1
                    isNext: input.next === place
                    isFaulty: field.fault !== ""
                }
                DigitBox {
                    width: boxes.boxWidth
                    digits: field.digits
                    place: 2
                    isNext: input.next === place
                    isFaulty: field.fault !== ""
                }
                Item {
                    width: 4
                    height: 1
                }
                DigitBox {
                    width: boxes.boxWidth
                    digits: field.digits
                    place: 3
                    isNext: input.next === place
                    isFaulty: field.fault !== ""
                }
                DigitBox {
                    width: boxes.boxWidth
                    digits: field.digits
                    place: 4
                    isNext: input.next === place
                    isFaulty: field.fault !== ""
                }
                DigitBox {
                    width: boxes.boxWidth
                    digits: field.digits
                    place: 5
                    isNext: input.next === place
                    isFaulty: field.fault !== ""
                }
            }
            TapHandler {
                onTapped: {
                    input.forceActiveFocus(Qt.MouseFocusReason);
                    input.cursorPosition = input.text.length;
                }
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
