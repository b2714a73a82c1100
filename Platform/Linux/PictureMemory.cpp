// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/PictureMemory.h"

#include <cstdlib> // which says whose C library it is
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace lumaro {

void giveBackPictureMemory() {
#ifdef __GLIBC__
    constexpr int smallest = 128 * 1024; // bytes, and what the C library begins with
    mallopt(M_MMAP_THRESHOLD, smallest); // NOLINT(concurrency-mt-unsafe): at the start there is one thread
#endif
}

} // namespace lumaro
