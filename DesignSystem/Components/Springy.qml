// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem

/// How a control gives way under a finger and comes back: a behaviour of its `scale`.
Behavior {
    enabled: !Theme.isMotionReduced

    SpringAnimation {
        spring: Theme.motion.spring
        damping: Theme.motion.damping
        epsilon: 0.002
    }
}
