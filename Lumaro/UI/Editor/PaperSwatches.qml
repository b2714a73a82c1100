// SPDX-License-Identifier: Apache-2.0
import DesignSystem
import Lumaro.UI

/// The paper colours of notes and of the board.
Swatches {
    names: ["butter", "blush", "sage", "sky", "lilac", "oat"]
    labels: [qsTr("butter"), qsTr("blush"), qsTr("sage"), qsTr("sky"), qsTr("lilac"), qsTr("oat")]
    colors: {
        const colors = [];
        for (const name of names) {
            colors.push(Theme.backgroundColor(name));
        }
        return colors;
    }
}
