// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/ImageType.h"
#include "LumaroCore/Support/UUID.h"
#include "LumaroRoom/Server/MediaAnswers.h"
#include "LumaroRoom/Server/Routes.h"

#include <utility>

namespace lumaro {
namespace {

constexpr const char* coverType = "image/jpeg";

ServerResponse answerTo(CoverOutcome put) {
    switch (put) {
    case CoverOutcome::stored: return jsonResponse(201, "{}");
    case CoverOutcome::isThere: return jsonResponse(200, "{}");
    case CoverOutcome::otherBytes: return mediaExists();
    }
    std::unreachable();
}

} // namespace

void Routes::putCover(Call call, Respond respond) {
    auto bytes = std::move(call.request.body);
    byDevice(
        call,
        [coupleId = call.match.id, id = UUID::parse(call.match.media), bytes = std::move(bytes),
         limit = limits_.maxCoupleCoverBytes,
         now = ports_.clock.now()](Store& store, const DeviceRecord&) -> StoreResult<Outcome> {
            if (!id) return Outcome{noSuchMedia(), {}};
            if (imageTypeOf(bytes) != coverType) return Outcome{badMedia("a cover is a JPEG"), {}};
            const auto put = store.putCover(coupleId, *id, bytes, now, limit);
            if (!put) return std::unexpected(put.error());
            return Outcome{answerTo(*put), {}};
        },
        std::move(respond));
}

void Routes::getCover(const Call& call, Respond respond) {
    byDevice(
        call,
        [coupleId = call.match.id, id = UUID::parse(call.match.media),
         now = ports_.clock.now()](Store& store, const DeviceRecord&) -> StoreResult<Outcome> {
            if (!id) return Outcome{noSuchMedia(), {}};
            auto bytes = store.readCover(coupleId, *id, now);
            if (!bytes) return std::unexpected(std::move(bytes.error()));
            return Outcome{*bytes ? mediaResponse(coverType, std::move(**bytes)) : noSuchMedia(), {}};
        },
        std::move(respond));
}

} // namespace lumaro
