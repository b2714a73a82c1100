// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// Colours, type, lengths, shadows and icons.
Column {
    id: tokens

    component Dab: Column {
        id: dab

        required property string name
        required property color tint

        width: 68
        spacing: Theme.size.tiny

        Rectangle {
            width: dab.width
            height: 48
            radius: Theme.size.smallRadius
            color: dab.tint
            border.width: 1
            border.color: Theme.color.line
        }
        Body {
            text: dab.name
            isSmall: true
            isSoft: true
        }
    }

    spacing: Theme.size.huge

    GalleryPart {
        heading: "the room"

        Repeater {
            model: ["room", "surface", "raised", "pressed", "edge", "line", "ink", "softInk", "accent", "accentPressed", "onAccent", "here", "away"]

            Dab {
                required property string modelData

                name: modelData
                tint: Theme.color[modelData]
            }
        }
    }
    GalleryPart {
        heading: "papers and inks"

        Repeater {
            model: ["butter", "blush", "sage", "sky", "lilac", "oat"]

            Dab {
                required property string modelData

                name: modelData
                tint: Theme.backgroundColor(modelData)
            }
        }
        Repeater {
            model: Theme.inks()

            Dab {
                required property string modelData

                name: modelData
                tint: Theme.inkColor(modelData)
            }
        }
    }
    GalleryPart {
        heading: "type"

        Row {
            spacing: Theme.size.large

            HandText {
                id: largest

                text: "a window for two"
                isLarge: true
            }
            HandText {
                anchors.baseline: largest.baseline
                text: "buy oranges 🍊"
            }
            Title {
                anchors.baseline: largest.baseline
                text: "bring them over"
            }
            Body {
                anchors.baseline: largest.baseline
                text: "what is read, 0123456789"
            }
            Body {
                anchors.baseline: largest.baseline
                text: "what steps back"
                isSoft: true
            }
            Body {
                anchors.baseline: largest.baseline
                text: "small, and stepping back 💌"
                isSmall: true
                isSoft: true
            }
        }
    }
    GalleryPart {
        heading: "lengths, corners, shadows"

        Repeater {
            model: ["tiny", "small", "medium", "large", "huge"]

            Rectangle {
                required property string modelData

                width: Theme.size[modelData]
                height: 20
                color: Theme.color.accent
            }
        }
        Repeater {
            model: [[8, 4], [14, 8], [14, 12], [24, 22]]

            Item {
                id: place

                required property var modelData

                width: 150
                height: 130

                Rectangle {
                    x: 20
                    y: 10
                    width: 110
                    height: 90
                    radius: place.modelData[0]
                    color: Theme.color.raised
                    border.width: 1
                    border.color: Theme.color.edge

                    Shadow {
                        radius: place.modelData[0]
                        lift: place.modelData[1]
                    }
                }
            }
        }
    }
    GalleryPart {
        heading: "icons"

        Repeater {
            model: ["bold", "bring-to-front", "calendar-heart", "check", "chevron-left", "chevron-right", "clock", "copy", "disc-3", "download", "eraser", "folder", "heart", "hourglass", "house", "image", "italic", "lasso", "link", "lock", "lock-open", "log-out", "minus", "monitor", "music", "music-2", "palette", "pen", "pencil", "pin", "plus", "redo-2", "refresh-cw", "rotate-cw", "scissors", "send-to-back", "settings", "square-dashed", "sticker", "sticky-note", "strikethrough", "timer", "trash-2", "type", "underline", "undo-2", "users", "x"]

            Icon {
                required property string modelData

                name: modelData
                side: 24
            }
        }
    }
}
