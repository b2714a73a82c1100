// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem
import Lumaro.UI

/// The board's paper colours over the button that asks for them. Esc closes it, and so does a click elsewhere, or the keys
/// going there; then they are where they were before.
T.Popup {
    id: popup

    required property string chosen
    property Item cameFrom: null

    signal chose(name: string)

    /// Unless they went on to another control.
    function giveKeysBack(now: Item): void {
        if (cameFrom !== null && (now === null || !now.activeFocusOnTab))
            cameFrom.forceActiveFocus(Qt.PopupFocusReason);
    }
    /// `byKeys`: the focus is to be seen on the colour that is chosen.
    function ask(byKeys: bool): void {
        cameFrom = parent.Window.activeFocusItem;
        open();
        for (let i = 0; byKeys && i < papers.children.length; ++i) {
            const swatch = papers.children[i] as Swatch;
            if (swatch?.checked)
                swatch.forceActiveFocus(Qt.TabFocusReason);
        }
    }

    x: Math.round((parent.width - width) / 2)
    y: -height - Theme.size.medium
    implicitWidth: papers.implicitWidth + 2 * padding
    implicitHeight: papers.implicitHeight + 2 * padding
    margins: Theme.size.small
    padding: Theme.size.tiny
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onActiveFocusChanged: if (!activeFocus) left.start()
    onClosed: giveKeysBack(parent.Window.activeFocusItem)

    Timer {
        id: left

        interval: 0
        onTriggered: popup.close()
    }

    PaperSwatches {
        id: papers

        chosen: popup.chosen
        onChose: name => {
            popup.chose(name);
            popup.close();
        }
    }

    background: Rectangle {
        radius: Theme.size.radius
        color: Theme.color.surface
        border.width: 1
        border.color: Theme.color.edge

        Shadow {
            radius: Theme.size.radius
            lift: 6
        }
    }
}
