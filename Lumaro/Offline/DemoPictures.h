// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace lumaro {

// Pictures for a demonstration, drawn here so that they are nobody's. Files as people put them up.

/// A lake in the evening, a street in the rain, or a table in the morning: 0, 1, 2.
std::string demoPhoto(int which, double aspect);
/// Of a record: boats of paper under the moon.
std::string demoCover();
/// A cat, cut out.
std::string demoSticker();

} // namespace lumaro
