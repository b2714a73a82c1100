// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppState.h"

#include <QtCore/QString>

namespace lumaro {

/// How things stand between the two people, on one line: whether the other one is here, or what is in the way.
QString statusLine(const AppState& state);

} // namespace lumaro
