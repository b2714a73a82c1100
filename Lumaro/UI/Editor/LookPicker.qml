// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem
import Widgets
import Lumaro.UI

/// The papers of notes, and the pins and tapes that hold them, to choose from. It comes up over the button that it lies
/// in, with the keys on it, and stays while people try.
T.Popup {
    id: picker

    property string paper
    property string pin

    signal chosePaper(name: string)
    signal chosePin(name: string)

    readonly property var labels: ({
            butter: qsTr("butter"),
            blush: qsTr("blush"),
            sage: qsTr("sage"),
            sky: qsTr("sky"),
            lilac: qsTr("lilac"),
            oat: qsTr("oat"),
            lined: qsTr("lined"),
            squared: qsTr("squared"),
            dotted: qsTr("dotted"),
            kraft: qsTr("kraft"),
            torn: qsTr("torn off"),
            brass: qsTr("brass pin"),
            coral: qsTr("coral pin"),
            mint: qsTr("mint pin"),
            ink: qsTr("dark pin"),
            pearl: qsTr("pearl pin"),
            plum: qsTr("plum pin"),
            heart: qsTr("a heart"),
            tape: qsTr("tape that goes with it"),
            tapeStripes: qsTr("striped tape"),
            tapeDots: qsTr("dotted tape"),
            tapeChecks: qsTr("checked tape"),
            tapeWaves: qsTr("wavy tape"),
            tapeKraft: qsTr("brown tape")
        })

    parent: T.Overlay.overlay
    margins: Theme.size.small
    padding: Theme.size.medium
    focus: true
    modal: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    T.Overlay.modal: Item {}

    /// Over `near`, or under it where there is no room above.
    function openNear(near: Item): void {
        const at = near.mapToItem(parent, near.width / 2, 0);
        const above = at.y - implicitHeight - Theme.size.small;
        x = Math.round(at.x - implicitWidth / 2);
        y = Math.round(above >= Theme.size.small ? above : at.y + near.height + Theme.size.small);
        open();
        papers.takeKeys();
    }

    implicitWidth: content.implicitWidth + 2 * padding
    implicitHeight: content.implicitHeight + 2 * padding
    background: Rectangle {
        radius: Theme.size.radius
        color: Theme.color.raised
        border.width: 1
        border.color: Theme.color.edge

        Shadow {
            radius: Theme.size.radius
            lift: 10
        }
    }

    Column {
        id: content

        spacing: Theme.size.small

        NoteSwatch {
            id: all

            visible: false
        }
        Body {
            text: qsTr("paper")
            color: Theme.color.softInk
        }
        LookGrid {
            id: papers

            names: all.papers
            labels: picker.labels
            chosen: picker.paper
            Accessible.name: qsTr("paper")
            onChose: name => picker.chosePaper(name)
        }
        Body {
            text: qsTr("pin or tape")
            color: Theme.color.softInk
        }
        LookGrid {
            names: all.pins
            labels: picker.labels
            isOfPins: true
            chosen: picker.pin
            paper: picker.paper
            Accessible.name: qsTr("pin or tape")
            onChose: name => picker.chosePin(name)
        }
    }
}
