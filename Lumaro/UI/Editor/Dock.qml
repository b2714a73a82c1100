// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// The shelf at the bottom: what can be put up, what can be taken back, and the way to the pages. It has words under its
/// icons where there is room, and two rows where one has none. It steps aside for what is under it, up to a lip that
/// brings it back.
Rectangle {
    id: dock

    required property EditorView editor
    required property PictureExchange pictures
    required property string background
    /// What the window has for it.
    required property size room
    /// Something that people work at lies under it, or they carry something there.
    property bool isInTheWay: false
    /// They carry it now: the dock does not come back before it is let go.
    property bool isCarrying: false
    readonly property bool isAside: isInTheWay && (isCarrying || !(isCalled || pointer.hovered || hasKeys))
    readonly property bool hasKeys: holds(Window.activeFocusItem)
    property bool isCalled: false

    readonly property real padding: Theme.size.small
    readonly property real betweenGroups: 1 + 2 * Theme.size.tiny
    readonly property real widest: room.width - 2 * Theme.size.small - 2 * padding
    readonly property var wordy: widthsOf(things.wordyWidth, board.wordyWidth + betweenGroups + pages.wordyWidth)
    readonly property var plain: widthsOf(things.plainWidth, board.plainWidth + betweenGroups + pages.plainWidth)
    readonly property bool hasWords: (wordy.one <= widest && room.height >= 540) || (wordy.two <= widest && room.height >= 900)
    readonly property bool hasTwoRows: (hasWords ? wordy : plain).one > widest

    signal countdownWanted
    signal doodleWanted
    signal boardPageWanted
    signal settingsWanted
    signal helpWanted

    function holds(item: Item): bool {
        while (item !== null && item !== dock)
            item = item.parent;
        return item !== null;
    }
    function widthsOf(first: real, second: real): var {
        return {
            one: first + betweenGroups + second,
            two: Math.max(first, second)
        };
    }

    width: rows.width + 2 * padding
    height: rows.height + 2 * padding
    radius: Theme.size.largeRadius
    color: Theme.color.surface
    border.width: 1
    border.color: Theme.color.edge
    onIsInTheWayChanged: isCalled = false
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("put something up")

    transform: Translate {
        y: dock.isAside ? dock.height + dock.anchors.bottomMargin - 12 : 0

        Behavior on y {
            enabled: !Theme.isMotionReduced

            NumberAnimation {
                duration: Theme.motion.quick
                easing.type: Easing.OutCubic
            }
        }
    }

    Shadow {
        radius: dock.radius
        lift: 10
    }

    // Clicks between the buttons do not fall through to the board.
    MouseArea {
        anchors.fill: parent
        onPressed: dock.isCalled = true
    }

    // Down to the window's edge, so that the dock does not come and go under a pointer that rests there.
    Item {
        anchors.fill: parent
        anchors.bottomMargin: -dock.anchors.bottomMargin

        HoverHandler {
            id: pointer
        }

        Grid {
            id: rows

            x: dock.padding
            y: dock.padding
            columns: dock.hasTwoRows ? 1 : 3
            columnSpacing: Theme.size.tiny
            rowSpacing: 2
            horizontalItemAlignment: Grid.AlignHCenter
            verticalItemAlignment: Grid.AlignVCenter

            PutUpTools {
                id: things

                hasWords: dock.hasWords
                editor: dock.editor
                pictures: dock.pictures
                onCountdownWanted: dock.countdownWanted()
                onDoodleWanted: dock.doodleWanted()
            }
            DockDivider {
                visible: !dock.hasTwoRows
            }
            Row {
                spacing: Theme.size.tiny

                DockGroup {
                    id: board

                    hasWords: dock.hasWords

                    DockTool {
                        text: qsTr("paper colour")
                        word: qsTr("paper")
                        iconName: "palette"
                        checked: papers.visible
                        onClicked: papers.visible ? papers.close() : papers.ask(visualFocus)

                        PaperPopup {
                            id: papers

                            chosen: dock.background
                            onChose: name => dock.editor.setBackground(name)
                        }
                    }
                    DockTool {
                        text: qsTr("take back")
                        word: qsTr("back")
                        hint: qsTr("Ctrl Z")
                        iconName: "undo-2"
                        enabled: dock.editor.canUndo
                        onClicked: dock.editor.undo()
                    }
                    DockTool {
                        text: qsTr("do again")
                        word: qsTr("again")
                        hint: qsTr("Ctrl Shift Z")
                        iconName: "redo-2"
                        enabled: dock.editor.canRedo
                        onClicked: dock.editor.redo()
                    }
                }
                DockDivider {
                    anchors.verticalCenter: parent.verticalCenter
                }
                DockGroup {
                    id: pages

                    hasWords: dock.hasWords

                    DockTool {
                        text: qsTr("the two of you")
                        word: qsTr("you two")
                        iconName: "users"
                        onClicked: dock.boardPageWanted()
                    }
                    DockTool {
                        text: qsTr("settings")
                        word: qsTr("settings")
                        iconName: "settings"
                        onClicked: dock.settingsWanted()
                    }
                    DockTool {
                        text: qsTr("keys and gestures")
                        word: qsTr("keys")
                        hint: "?"
                        iconName: "keyboard"
                        onClicked: dock.helpWanted()
                    }
                }
            }
        }
    }
}
