// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Widgets

/// One item where it hangs. It springs to a new place unless it is in somebody's hand, drops in when it arrives, beats
/// once when a doodle arrives on it, and falls out of the window when it is taken down.
Item {
    id: item

    required property BoardFrame frame
    required property string itemId
    required property string kind
    required property real centerX
    required property real centerY
    required property real anchorX
    required property real anchorY
    required property real anchorReachX
    required property real anchorReachY
    required property real naturalWidth
    required property real naturalHeight
    required property real tilt
    required property real itemScale
    required property int stack
    required property itemFace face
    required property string spoken
    required property bool isArriving
    required property bool isFalling
    required property bool isInHand
    required property bool isTouched

    readonly property real pointScale: frame.canvas.scale * itemScale
    readonly property bool isSpringing: !isInHand && isSettled && !Theme.isMotionReduced && !frame.isPaused
    readonly property bool isMember: frame.members.includes(itemId)
    readonly property bool isWalkedTo: frame.walkedTo === itemId
    readonly property bool weatherMoves: kind === "location" && frame.weatherMoves && !Theme.isMotionReduced
    readonly property bool isSelected: frame?.selected === itemId
    readonly property bool isAttended: (frame?.hasKeys ?? false) && (isWalkedTo || (isSelected && frame.walkedTo === ""))
    /// Notes are written on upright, where caret and selection are whole.
    readonly property bool isWritten: frame.written === itemId
    property bool isSettled: false
    property real placeX: centerX
    property real placeY: centerY
    property real drop: 0

    width: naturalWidth * pointScale
    height: naturalHeight * pointScale
    x: frame.canvas.viewX(placeX + frame.inwardX(anchorX, anchorReachX)) - width / 2
    y: frame.canvas.viewY(placeY + frame.inwardY(anchorY, anchorReachY)) - height / 2 + drop
    z: stack
    rotation: isWritten ? 0 : tilt

    Accessible.role: Accessible.Graphic
    Accessible.name: spoken
    Accessible.description: isAttended ? qsTr("space goes to what can be done with it") : ""
    Accessible.ignored: !(frame?.isRead ?? false) || isFalling
    Accessible.focusable: true
    Accessible.focused: isAttended
    Accessible.selected: isSelected || isMember
    Accessible.selectable: true
    onIsAttendedChanged: {
        if (isAttended)
            ScreenReader.moveTo(item);
    }

    Behavior on placeX {
        enabled: item.isSpringing
        SpringAnimation {
            spring: Theme.motion.spring
            damping: Theme.motion.damping
            epsilon: 0.5
        }
    }
    Behavior on placeY {
        enabled: item.isSpringing
        SpringAnimation {
            spring: Theme.motion.spring
            damping: Theme.motion.damping
            epsilon: 0.5
        }
    }
    Behavior on rotation {
        enabled: item.isSpringing || (item.isWritten && item.isSettled && !Theme.isMotionReduced && !item.frame.isPaused)
        SpringAnimation {
            spring: Theme.motion.spring
            damping: Theme.motion.damping
            epsilon: 0.1
        }
    }

    Component.onCompleted: isSettled = true
    // A delegate is created before it has a parent, which has the frame.
    onFrameChanged: {
        if (isArriving) {
            arrive();
        }
    }
    onIsArrivingChanged: {
        if (isArriving) {
            arrive();
        }
    }
    onIsTouchedChanged: {
        if (isTouched && !isArriving && !Theme.isMotionReduced && frame && !frame.isPaused) {
            beat.restart();
        }
    }
    onIsFallingChanged: {
        if (isFalling) {
            fall.start();
        } else {
            fall.stop();
            drop = 0;
            opacity = 1;
        }
    }

    function arrive(): void {
        if (!frame || frame.isPaused) {
            return;
        }
        glow.active = true;
        if (Theme.isMotionReduced) {
            appear.restart();
        } else {
            land.restart();
        }
    }

    Loader {
        id: glow

        active: false
        anchors.fill: parent
        source: "ArrivalGlow.qml"
    }

    ItemPaper {
        part: item.kind === "nowPlayingSlot" ? ItemPaper.Under : ItemPaper.Whole
        face: item.isWritten ? item.face.withoutText() : item.weatherMoves ? item.face.withoutFall() : item.face
        pointScale: item.pointScale
        naturalSize: Qt.size(item.naturalWidth, item.naturalHeight)
        dark: Theme.isDark
        x: -bleedLeft
        y: -bleedTop
    }

    Loader {
        anchors.fill: parent
        active: item.kind === "nowPlayingSlot"
        source: "TurningRecord.qml"
    }

    Loader {
        anchors.fill: parent
        active: item.weatherMoves
        source: "MovingWeather.qml"
    }

    Loader {
        anchors.fill: parent
        anchors.margins: item.isWalkedTo ? -9 : -4
        active: item.isMember || item.isWalkedTo
        source: "MemberRing.qml"
    }

    ParallelAnimation {
        id: land

        NumberAnimation {
            target: item
            property: "scale"
            from: 1.22
            to: 1
            duration: Theme.motion.land
            easing.type: Easing.OutBack
            easing.overshoot: Theme.motion.overshoot
        }
        NumberAnimation {
            target: item
            property: "drop"
            from: -70 * item.frame.canvas.scale
            to: 0
            duration: Theme.motion.land
            easing.type: Easing.OutBack
            easing.overshoot: Theme.motion.overshoot
        }
    }

    // Whose heart it is, it feels once.
    SequentialAnimation {
        id: beat

        NumberAnimation {
            target: item
            property: "scale"
            to: 1.06
            duration: Theme.motion.quick
            easing.type: Easing.OutQuad
        }
        NumberAnimation {
            target: item
            property: "scale"
            to: 1
            duration: Theme.motion.land
            easing.type: Easing.OutBack
        }
    }

    NumberAnimation {
        id: appear

        target: item
        property: "opacity"
        from: 0
        to: 1
        duration: Theme.motion.quick
    }

    ParallelAnimation {
        id: fall

        NumberAnimation {
            target: item
            property: "drop"
            to: Theme.isMotionReduced ? 0 : item.frame.height
            duration: Theme.isMotionReduced ? Theme.motion.quick : Theme.motion.fall
            easing.type: Easing.InCubic
        }
        NumberAnimation {
            target: item
            property: "rotation"
            to: Theme.isMotionReduced ? item.tilt : item.tilt + (item.stack % 2 ? 14 : -14)
            duration: Theme.motion.fall
            easing.type: Easing.InQuad
        }
        NumberAnimation {
            target: item
            property: "opacity"
            to: 0
            duration: Theme.isMotionReduced ? Theme.motion.quick : Theme.motion.fall
            easing.type: Easing.InExpo
        }
    }
}
