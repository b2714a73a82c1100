// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/MediaAnswers.h"

#include <utility>

namespace lumaro {

ServerResponse noSuchMedia() {
    return errorResponse(404, "not_found", "there is no such picture; pictures are named by UUIDs");
}

ServerResponse badMedia(std::string_view message) {
    return errorResponse(415, "bad_media", message);
}

ServerResponse mediaExists() {
    return errorResponse(409, "media_exists", "other bytes were stored under this id");
}

ServerResponse mediaResponse(std::string contentType, std::string bytes) {
    return {200,
            {{"content-type", std::move(contentType)},
             {"cache-control", "private, max-age=31536000, immutable"},
             {"x-content-type-options", "nosniff"}},
            std::move(bytes)};
}

} // namespace lumaro
