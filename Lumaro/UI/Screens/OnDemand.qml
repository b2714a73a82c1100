// SPDX-License-Identifier: Apache-2.0
import QtQuick

/// Creates something when it is wanted, and destroys it when it signals `closed`. Unlike a `Loader` it also holds what is
/// no item: sheets and menus.
Item {
    id: onDemand

    required property Component sourceComponent
    /// The initial properties of the instance.
    required property var properties
    /// The instance is created as soon as this is so; otherwise by `create`.
    property bool isWanted: false
    readonly property bool isDue: isWanted && sourceComponent && properties
    property QtObject instance: null

    signal closed

    /// The instance, created if there is none.
    function create(): QtObject {
        if (!instance)
            instance = sourceComponent.createObject(onDemand, properties);
        return instance;
    }

    onIsDueChanged: if (isDue) create()

    Connections {
        target: onDemand.instance
        ignoreUnknownSignals: true

        function onClosed(): void {
            onDemand.instance.destroy();
            onDemand.instance = null;
            onDemand.closed();
        }
    }
}
