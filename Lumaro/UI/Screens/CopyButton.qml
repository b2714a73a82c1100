// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// A button that puts something on the clipboard, and says for a moment that it did.
PaperButton {
    id: button

    property bool isDone: false

    signal copied

    iconName: isDone ? "check" : "copy"
    onClicked: {
        button.isDone = true;
        forget.restart();
        button.copied();
    }

    Timer {
        id: forget

        interval: 2000
        onTriggered: button.isDone = false
    }
}
