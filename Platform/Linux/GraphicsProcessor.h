// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace lumaro {

/// Whether this computer has something to draw with beside its processor.
bool hasGraphicsProcessor();

} // namespace lumaro
