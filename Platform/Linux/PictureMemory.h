// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace lumaro {

/// From now on memory of the size of a picture goes back to the system as soon as it is freed. Without it the C library
/// learns from the first large pictures to keep them all in its heap, between what stays. Once, at the start.
void giveBackPictureMemory();

} // namespace lumaro
