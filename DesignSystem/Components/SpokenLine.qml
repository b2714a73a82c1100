// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Says something to people who use a screen reader, without taking them from where they are. Nothing is drawn.
Item {
    id: line

    property string text

    function say(what: string): void {
        text = what;
        ScreenReader.say(line);
    }

    width: 1
    height: 1
    Accessible.role: Accessible.Notification
    Accessible.name: text
}
