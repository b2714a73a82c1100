// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Asks before one's hours are shared for the first time.
Sheet {
    id: sheet

    required property PlaceView place

    function ask(): void {
        open();
        question.takeKeys();
    }

    title: qsTr("let them see your hours")
    paperWidth: 460

    HoursQuestion {
        id: question

        place: sheet.place
        onAnswered: sheet.close()
    }
}
