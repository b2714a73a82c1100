// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// All that is known of a place, on a slip of paper.
Rectangle {
    id: slip

    required property placeWords words

    function joined(first: string, second: string): string {
        return first !== "" && second !== "" ? first + "  ·  " + second : first + second;
    }

    width: parent ? parent.width : 0
    height: lines.implicitHeight + 2 * Theme.size.medium
    radius: Theme.size.radius
    color: Theme.color.raised
    border.width: 1
    border.color: Theme.color.edge

    component Line: Body {
        width: parent.width
        visible: text !== ""
        isSmall: true
    }

    Column {
        id: lines

        x: Theme.size.large
        y: Theme.size.medium
        width: parent.width - 2 * Theme.size.large
        spacing: 3

        HandText {
            width: parent.width
            text: slip.words.label
            maximumLineCount: 2
            elide: Text.ElideRight
        }
        Line {
            text: slip.joined(slip.words.town, slip.words.since)
            isSoft: true
            bottomPadding: Theme.size.small
        }
        Line {
            text: slip.words.weather
            isSmall: false
        }
        Line {
            text: slip.joined(slip.words.range, slip.words.wind)
        }
        Line {
            text: slip.words.age
            isSoft: true
            bottomPadding: Theme.size.small
        }
        Line {
            text: slip.joined(slip.words.clock, slip.words.position)
            isSoft: true
        }
    }
}
