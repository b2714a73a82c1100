// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// Asks before music is shared for the first time.
Sheet {
    id: sheet

    required property MusicView music

    function ask(): void {
        open();
        question.takeKeys();
    }

    title: qsTr("share what i'm listening to")
    paperWidth: 460

    MusicQuestion {
        id: question

        music: sheet.music
        onAnswered: sheet.close()
    }
}
