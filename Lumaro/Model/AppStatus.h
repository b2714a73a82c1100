// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppState.h"

#include <string>

namespace lumaro {

/// The whole published state as one JSON object, for scripts and tests; the token in its redacted form. The board is
/// not in it: it has a form of its own.
std::string statusJson(const AppState& state);

} // namespace lumaro
