// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace lumaro {

/// Sets what Qt, the browser and the drivers below them read of the environment, before any of them does: pixels as
/// many as asked for, software drawing where there is no graphics processor, no debugging port, nowhere to put files,
/// and the browser's sandbox for everybody but root, for whom it does not start.
void prepareEnvironment(double scale);

} // namespace lumaro
