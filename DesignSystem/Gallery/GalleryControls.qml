// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// The controls, each as it stands, checked, faulty and off.
Column {
    spacing: Theme.size.huge

    GalleryPart {
        heading: "buttons"

        PaperButton {
            kind: PaperButton.Primary
            text: "start our board"
        }
        PaperButton {
            text: "i have a code"
        }
        PaperButton {
            iconName: "folder"
            text: "open the folder"
        }
        PaperButton {
            kind: PaperButton.Quiet
            iconName: "log-out"
            text: "leave the board"
        }
        PaperButton {
            kind: PaperButton.Primary
            text: "just a moment…"
            enabled: false
        }
        PaperButton {
            text: "not now"
            enabled: false
        }
    }
    GalleryPart {
        heading: "icon buttons, chips, swatches"

        IconButton {
            iconName: "sticky-note"
            text: "note"
        }
        IconButton {
            iconName: "pen"
            text: "draw"
            checkable: true
            checked: true
        }
        IconButton {
            iconName: "redo-2"
            text: "again"
            enabled: false
        }
        Chip {
            text: "like the system"
            checkable: true
            checked: true
        }
        Chip {
            text: "by day"
            checkable: true
        }
        Chip {
            text: "a fresh one"
            iconName: "refresh-cw"
        }
        Repeater {
            model: ["butter", "blush", "sage", "sky", "lilac", "oat"]

            Swatch {
                required property string modelData

                text: modelData
                swatch: Theme.backgroundColor(modelData)
                checked: modelData === "sage"
            }
        }
    }
    GalleryPart {
        heading: "fields"

        Field {
            width: 360
            label: "what do they call you?"
            placeholder: "your name"
            helper: "it stands on what you put up."
        }
        Field {
            width: 360
            label: "the link they sent you"
            text: "https://board.example/for/abcdefgh"
            fault: "that link was replaced — ask them for the new one 💌"
        }
        DigitsField {
            label: "the six digits they read out"
            helper: "they find them under “bring them over”."
        }
        DigitsField {
            label: "and when they were wrong"
            fault: "those digits don't match a board. check them with them?"
        }
    }
    GalleryPart {
        heading: "toggles"

        Column {
            spacing: Theme.size.medium

            Toggle {
                width: 360
                text: "open at login"
                helper: "so it hangs there when you come in."
                checked: true
            }
            Toggle {
                width: 360
                text: "less motion"
            }
            Toggle {
                width: 360
                text: "sounds"
                enabled: false
            }
        }
    }
    GalleryPart {
        heading: "slips"

        Item {
            width: 480
            height: 110

            Toast {
                lasts: 100000000
                Component.onCompleted: show("taken down", "undo")
            }
        }
        Item {
            width: 260
            height: 90

            Rectangle {
                x: 80
                y: 48
                width: 40
                height: 40
                radius: Theme.size.radius
                color: Theme.color.pressed

                Icon {
                    anchors.centerIn: parent
                    name: "pen"
                }
                Tip {
                    text: "draw  ·  D"
                    isWanted: true
                }
            }
        }
    }
}
