// SPDX-License-Identifier: Apache-2.0
import QtQuick

/// A place for something that is made when it is wanted, and goes when it says that it is closed.
Item {
    id: later

    /// What is made, and the properties that it requires.
    required property Component what
    required property var properties
    /// It is made as soon as this is so; otherwise when `made` is called.
    property bool isWanted: false
    readonly property bool isDue: isWanted && what && properties
    property QtObject thing: null

    signal closed

    function made(): QtObject {
        if (!thing)
            thing = what.createObject(later, properties);
        return thing;
    }

    onIsDueChanged: if (isDue) made()

    Connections {
        target: later.thing
        ignoreUnknownSignals: true

        function onClosed(): void {
            later.thing.destroy();
            later.thing = null;
            later.closed();
        }
    }
}
