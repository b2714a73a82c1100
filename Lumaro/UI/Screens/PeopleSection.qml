// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Who is on the board, and what they are called.
Section {
    id: people

    required property AppView view

    Row {
        width: parent.width
        spacing: Theme.size.medium

        Initial {
            anchors.verticalCenter: parent.verticalCenter
            name: people.view.face.myName === "" ? qsTr("you") : people.view.face.myName
            picture: people.view.face.myPicture
        }
        Field {
            id: name

            width: parent.width - 44 - parent.spacing
            placeholder: qsTr("what do they call you?")
            maximumLength: 40
            onAccepted: people.view.setName(name.text)
            onActiveFocusChanged: if (!activeFocus) people.view.setName(name.text)
            Component.onCompleted: text = people.view.face.myName

            // Not while the person types.
            Connections {
                target: people.view

                function onFaceChanged(): void {
                    if (!name.activeFocus)
                        name.text = people.view.face.myName;
                }
            }
        }
    }
    Row {
        width: parent.width
        spacing: Theme.size.medium

        Initial {
            anchors.verticalCenter: parent.verticalCenter
            name: people.view.face.hasPartner ? people.view.face.partnerName : "?"
            isSecond: true
        }
        Column {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 44 - parent.spacing

            Body {
                width: parent.width
                text: people.view.face.hasPartner ? people.view.face.partnerName : qsTr("nobody else yet")
                font.weight: Font.DemiBold
            }
            Row {
                spacing: 6

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 8
                    height: 8
                    radius: 4
                    color: people.view.face.isPartnerHere ? Theme.color.here : Theme.color.away
                }
                Body {
                    isSmall: true
                    isSoft: true
                    text: {
                        if (people.view.face.isPlaceFree || !people.view.face.hasPartner)
                            return qsTr("the place beside you is free");
                        return people.view.face.isPartnerHere ? qsTr("is here now") : qsTr("isn't here just now");
                    }
                }
            }
        }
    }
}
