// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem
import Lumaro.UI

/// What the editor and the pictures have to tell, one at a time. What was taken away meanwhile can be put back. It is
/// over a sheet that is open, too.
Toast {
    id: toast

    required property Item page
    /// Of the page's height, what it leaves free below it where no sheet is open.
    property real roomBelow: 0
    readonly property Item overlay: T.Overlay.overlay
    readonly property bool isOverSheet: overlay?.visible ?? false
    required property EditorView editor
    required property PictureExchange pictures

    parent: isOverSheet ? overlay : page
    anchors.bottomMargin: isOverSheet ? 0 : roomBelow
    onActed: editor.putBack()

    Connections {
        target: toast.editor

        function onNoticed(text: string): void {
            toast.show(text, toast.editor.isTakenAway ? qsTr("put it back") : "");
        }
    }
    Connections {
        target: toast.pictures

        function onNoticed(text: string): void {
            toast.show(text, "");
        }
    }
}
