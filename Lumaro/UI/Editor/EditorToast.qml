// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What the editor and the pictures have to tell, one at a time. What was taken away meanwhile can be put back.
Toast {
    id: toast

    required property EditorView editor
    required property PictureExchange pictures

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
