// SPDX-License-Identifier: Apache-2.0
import QtQml

/// Everything that keys and pointer do on the board, for the page that shows it: the one list. A new key is a new line
/// here, and in docs/windows.md.
QtObject {
    component Line: QtObject {
        required property string keys
        required property string does
    }
    component Part: QtObject {
        required property string heading
        required property list<Line> lines
    }

    readonly property list<Part> parts: [
        Part {
            heading: qsTr("with the pointer")
            lines: [
                Line {
                    keys: qsTr("drag")
                    does: qsTr("move")
                },
                Line {
                    keys: qsTr("corner, wheel")
                    does: qsTr("larger, smaller")
                },
                Line {
                    keys: qsTr("round handle")
                    does: qsTr("turn")
                },
                Line {
                    keys: qsTr("double-click")
                    does: qsTr("write, draw or set it")
                },
                Line {
                    keys: qsTr("right click")
                    does: qsTr("all that can be done")
                },
                Line {
                    keys: qsTr("drop")
                    does: qsTr("a picture or words hang where they fall")
                }
            ]
        },
        Part {
            heading: qsTr("putting up")
            lines: [
                Line {
                    keys: qsTr("N")
                    does: qsTr("a quick note")
                },
                Line {
                    keys: qsTr("D")
                    does: qsTr("draw, on what is selected")
                },
                Line {
                    keys: qsTr("Ctrl V")
                    does: qsTr("paste words or a picture")
                },
                Line {
                    keys: qsTr("Ctrl C, Ctrl D")
                    does: qsTr("copy, once more")
                }
            ]
        },
        Part {
            heading: qsTr("finding your way")
            lines: [
                Line {
                    keys: qsTr("Tab, Shift Tab")
                    does: qsTr("from one thing to the next, then to the dock")
                },
                Line {
                    keys: qsTr("Space")
                    does: qsTr("to what can be done with it")
                },
                Line {
                    keys: qsTr("Menu")
                    does: qsTr("all that can be done")
                },
                Line {
                    keys: qsTr("Esc")
                    does: qsTr("let go")
                },
                Line {
                    keys: qsTr("?, F1")
                    does: qsTr("this page")
                }
            ]
        },
        Part {
            heading: qsTr("what is selected")
            lines: [
                Line {
                    keys: qsTr("arrows")
                    does: qsTr("a little; with Shift further")
                },
                Line {
                    keys: qsTr("+, −")
                    does: qsTr("larger, smaller")
                },
                Line {
                    keys: qsTr("R, Shift R")
                    does: qsTr("turn")
                },
                Line {
                    keys: qsTr("Enter")
                    does: qsTr("write, draw or set it")
                },
                Line {
                    keys: qsTr("F")
                    does: qsTr("to the front")
                },
                Line {
                    keys: qsTr("K")
                    does: qsTr("keep a note up, or not")
                },
                Line {
                    keys: qsTr("Delete")
                    does: qsTr("take down")
                }
            ]
        },
        Part {
            heading: qsTr("taking back")
            lines: [
                Line {
                    keys: qsTr("Ctrl Z")
                    does: qsTr("your last act; never theirs")
                },
                Line {
                    keys: qsTr("Ctrl Shift Z")
                    does: qsTr("do it again")
                }
            ]
        },
        Part {
            heading: qsTr("writing")
            lines: [
                Line {
                    keys: qsTr("Ctrl B, I, U")
                    does: qsTr("bold, italic, underline")
                },
                Line {
                    keys: qsTr("Ctrl Shift X")
                    does: qsTr("strike")
                },
                Line {
                    keys: qsTr("Esc")
                    does: qsTr("done")
                }
            ]
        },
        Part {
            heading: qsTr("drawing")
            lines: [
                Line {
                    keys: qsTr("E")
                    does: qsTr("the eraser, or the pen again")
                },
                Line {
                    keys: qsTr("Enter")
                    does: qsTr("stick it up")
                },
                Line {
                    keys: qsTr("Esc")
                    does: qsTr("leave it")
                }
            ]
        }
    ]
}
