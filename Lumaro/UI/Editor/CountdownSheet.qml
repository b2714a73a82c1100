// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What is counted down to, and when it is: typed, or picked from a month and a clock.
Sheet {
    id: sheet

    required property EditorView editor
    readonly property CountdownChoices choices: editor.countdown
    property bool isNew: true

    function put(): void {
        isNew = true;
        label.text = "";
        choices.inDays(7);
        open();
        label.forceActiveFocus();
    }

    function edit(): void {
        isNew = false;
        label.text = editor.selected.text;
        choices.begin(editor.selected.targetMs);
        open();
        label.forceActiveFocus();
    }

    function finish(): void {
        if (!choices.isGood) {
            (choices.dayFault !== "" ? day : time).forceActiveFocus();
            return;
        }
        if (isNew) {
            editor.putUpCountdown(label.text, choices.moment);
        } else {
            editor.setCountdown(label.text, choices.moment);
        }
        close();
    }

    title: qsTr("how long until…")
    paperWidth: 712

    Flow {
        id: columns

        width: parent.width
        spacing: Theme.size.huge

        Column {
            width: Math.max(260, columns.width - month.width - columns.spacing)
            spacing: Theme.size.medium

            Field {
                id: label

                width: parent.width
                label: qsTr("until")
                placeholder: qsTr("the train to you")
                maximumLength: 60
                onAccepted: sheet.finish()
            }
            Field {
                id: day

                width: parent.width
                label: qsTr("day")
                placeholder: qsTr("24 dec, tomorrow, friday")
                maximumLength: 60
                text: sheet.choices.day
                fault: sheet.choices.dayFault
                onEdited: sheet.choices.day = text
                onAccepted: sheet.finish()

                // What is typed breaks the binding; what is picked is to be seen all the same.
                Connections {
                    target: sheet.choices

                    function onChanged(): void {
                        if (day.text !== sheet.choices.day)
                            day.text = sheet.choices.day;
                        if (time.text !== sheet.choices.time)
                            time.text = sheet.choices.time;
                    }
                }
            }
            Item {
                width: parent.width
                height: time.height

                Field {
                    id: time

                    width: parent.width - clock.width - Theme.size.medium
                    label: qsTr("time")
                    placeholder: "18:00"
                    maximumLength: 20
                    text: sheet.choices.time
                    fault: sheet.choices.timeFault
                    onEdited: sheet.choices.time = text
                    onAccepted: sheet.finish()
                }
                Row {
                    id: clock

                    anchors.right: parent.right
                    y: 27

                    ClockHand {
                        name: qsTr("hour")
                        value: sheet.choices.hour
                        onTurned: by => sheet.choices.moveHour(by)
                    }
                    Body {
                        anchors.verticalCenter: parent.verticalCenter
                        text: ":"
                        isSoft: true
                        Accessible.ignored: true
                    }
                    ClockHand {
                        name: qsTr("minute")
                        value: sheet.choices.minute
                        step: 5
                        onTurned: by => sheet.choices.moveMinute(by)
                    }
                }
            }
        }
        MonthPicker {
            id: month

            choices: sheet.choices
            onAccepted: sheet.finish()
        }
    }
    Body {
        width: parent.width
        visible: text !== ""
        text: sheet.choices.warning === "" ? sheet.choices.meaning : sheet.choices.meaning + " — " + sheet.choices.warning
        color: sheet.choices.warning === "" ? Theme.color.softInk : Theme.color.accent
    }
    Item {
        width: parent.width
        height: chips.height

        Flow {
            id: chips

            width: parent.width - done.width - Theme.size.medium
            spacing: Theme.size.tiny

            Chip {
                text: qsTr("tomorrow")
                onClicked: sheet.choices.inDays(1)
            }
            Chip {
                text: qsTr("in a week")
                onClicked: sheet.choices.inDays(7)
            }
            Chip {
                text: qsTr("in a month")
                onClicked: sheet.choices.inDays(30)
            }
        }
        PaperButton {
            id: done

            anchors.right: parent.right
            kind: PaperButton.Primary
            text: sheet.isNew ? qsTr("hang it up") : qsTr("done")
            enabled: sheet.choices.isGood
            onClicked: sheet.finish()
        }
    }
}
