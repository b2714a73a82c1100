// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Media/MediaFault.h"

#include <utility>

namespace lumaro {

std::string_view textOf(MediaFault fault) {
    switch (fault) {
    case MediaFault::notAPicture: return "that picture couldn't go up — it has to be a JPEG, a PNG or a WebP.";
    case MediaFault::tooLarge: return "that picture couldn't go up — it's too big.";
    case MediaFault::notStored: return "that picture couldn't go up — this mac couldn't save it.";
    case MediaFault::lost: return "that picture couldn't go up — its file is gone from this mac.";
    case MediaFault::roomFull: return "that picture couldn't go up — your board has no room for more pictures.";
    case MediaFault::refused: return "that picture couldn't go up.";
    }
    std::unreachable();
}

} // namespace lumaro
