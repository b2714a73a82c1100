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
                    keys: qsTr("Shift click, drag around")
                    does: qsTr("several at once")
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
                    does: qsTr("write, set it, see it large")
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
                    keys: qsTr("N, D")
                    does: qsTr("a note; draw, on what is selected")
                },
                Line {
                    keys: qsTr("Ctrl V")
                    does: qsTr("paste words or a picture")
                },
                Line {
                    keys: qsTr("Ctrl C, Ctrl D")
                    does: qsTr("copy, once more")
                },
                Line {
                    keys: qsTr("Ctrl Z, Ctrl Shift Z")
                    does: qsTr("take back your last act, do it again; never theirs")
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
                    keys: qsTr("Ctrl A, Ctrl Space")
                    does: qsTr("select all; gather several on the way")
                },
                Line {
                    keys: qsTr("Space, Menu")
                    does: qsTr("to what can be done with it")
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
                    does: qsTr("write, set it, see it large")
                },
                Line {
                    keys: qsTr("V, O")
                    does: qsTr("read a note large, open a link in it")
                },
                Line {
                    keys: qsTr("C")
                    does: qsTr("write a photo's caption")
                },
                Line {
                    keys: qsTr("F, B")
                    does: qsTr("to the front, to the back")
                },
                Line {
                    keys: qsTr("K, L")
                    does: qsTr("keep a note up; lock or unlock")
                },
                Line {
                    keys: qsTr("H")
                    does: qsTr("a heart on it")
                },
                Line {
                    keys: qsTr("Delete")
                    does: qsTr("take down")
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
                    keys: qsTr("Ctrl Z")
                    does: qsTr("back by a stroke")
                },
                Line {
                    keys: qsTr("Enter, Esc")
                    does: qsTr("stick it up")
                },
                Line {
                    keys: qsTr("Delete")
                    does: qsTr("throw it away, asked once")
                }
            ]
        },
        Part {
            heading: qsTr("pictures")
            lines: [
                Line {
                    keys: qsTr("arrows")
                    does: qsTr("large: on to the others")
                },
                Line {
                    keys: qsTr("Ctrl C, Ctrl S")
                    does: qsTr("large: copy, save")
                },
                Line {
                    keys: qsTr("arrows, Space, X")
                    does: qsTr("scissors: move, keep, leave out")
                }
            ]
        }
    ]
}
