// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppState.h"

#include <QtCore/QString>

namespace lumaro {

/// Whether a device that stands so with its room is trying again after an attempt that failed, or a connection that
/// broke; `before` is what held until this state. It holds until it is connected, for people are not to see each
/// attempt.
bool isRetrying(bool before, const ConnectionState& connection);

/// How things stand between the two people, on one line: whether the other one is here, or what is in the way.
QString statusLine(const AppState& state, bool isRetrying);

} // namespace lumaro
