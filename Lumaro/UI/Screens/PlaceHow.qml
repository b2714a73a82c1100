// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// How exactly the place is told, and who says where it is: this computer, or the person.
Column {
    id: how

    required property PlaceView place
    property bool isPicking: false

    function pick(): void {
        isPicking = true;
        picker.takeKeys();
    }
    function leavePicker(): void {
        isPicking = false;
        byHand.forceActiveFocus(Qt.TabFocusReason);
    }

    width: parent ? parent.width : 0
    spacing: Theme.size.small

    Body {
        visible: how.place.hurdle !== ""
        width: parent.width
        text: how.place.hurdle
        font.weight: Font.DemiBold
    }
    Body {
        visible: how.place.help !== ""
        width: parent.width
        isSmall: true
        isSoft: true
        text: how.place.help
    }
    Flow {
        width: parent.width
        spacing: Theme.size.small
        Accessible.role: Accessible.Grouping
        Accessible.name: qsTr("who says where you are")

        Chip {
            checkable: true
            checked: !how.place.isByHand
            text: how.place.isByHand ? qsTr("find it for me") : qsTr("found by this computer")
            onClicked: {
                how.isPicking = false;
                checked = Qt.binding(() => !how.place.isByHand);
                how.place.findForMe();
            }
        }
        Chip {
            id: byHand

            checkable: true
            checked: how.place.isByHand
            text: qsTr("i'm in …")
            onClicked: {
                checked = Qt.binding(() => how.place.isByHand);
                how.pick();
            }
        }
        Chip {
            visible: how.place.isOff
            iconName: "refresh-cw"
            text: qsTr("look again")
            onClicked: how.place.lookAgain()
        }
    }
    Rectangle {
        visible: how.isPicking
        width: parent.width
        height: picker.implicitHeight + 2 * Theme.size.medium
        radius: Theme.size.radius
        color: Theme.color.pressed

        PlacePicker {
            id: picker

            x: Theme.size.large
            y: Theme.size.medium
            width: parent.width - 2 * Theme.size.large
            place: how.place
            onChosen: how.leavePicker()
            onCancelled: how.leavePicker()
        }
    }
    Body {
        visible: !how.isPicking && how.place.help === ""
        width: parent.width
        isSmall: true
        isSoft: true
        text: how.place.isByHand ? qsTr("you're in %1; nobody is asked where you are.").arg(how.place.chosen) : qsTr("to find itself, this computer asks a public service with the wi-fi networks in sight. “i'm\u00a0in\u00a0…” asks nobody where you are.")
    }
    Body {
        visible: !how.isPicking && text !== ""
        width: parent.width
        isSmall: true
        isSoft: true
        text: how.place.zoneNote
    }
    Flow {
        width: parent.width
        topPadding: Theme.size.small
        spacing: Theme.size.small
        Accessible.role: Accessible.Grouping
        Accessible.name: qsTr("how exactly")

        Chip {
            checkable: true
            checked: how.place.precision === "neighbourhood"
            text: qsTr("my neighbourhood")
            onClicked: {
                checked = Qt.binding(() => how.place.precision === "neighbourhood");
                how.place.precision = "neighbourhood";
            }
        }
        Chip {
            checkable: true
            checked: how.place.precision === "block"
            text: qsTr("my block")
            onClicked: {
                checked = Qt.binding(() => how.place.precision === "block");
                how.place.precision = "block";
            }
        }
    }
    Body {
        width: parent.width
        isSmall: true
        isSoft: true
        text: how.place.precision === "block" ? qsTr("where you are to about 100 m.") : qsTr("where you are to about a kilometre.")
    }
}
