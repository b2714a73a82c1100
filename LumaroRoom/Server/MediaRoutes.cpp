// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/ImageType.h"
#include "LumaroCore/Support/UUID.h"
#include "LumaroRoom/Pairing/Secrets.h"
#include "LumaroRoom/Server/MediaAnswers.h"
#include "LumaroRoom/Server/Routes.h"

#include <utility>

namespace lumaro {
namespace {

StoreResult<ServerResponse> put(Store& store, const std::string& coupleId, const UUID& id,
                                const Store::MediaRecord& record, const ServerRequest& request, std::size_t limit,
                                Instant now) {
    const auto there = store.media(coupleId, id);
    if (!there) return std::unexpected(there.error());
    if (*there) {
        return (*there)->digest == record.digest ? jsonResponse(200, "{}") : mediaExists();
    }
    const auto used = store.mediaBytes(coupleId);
    if (!used) return std::unexpected(used.error());
    if (*used + record.bytes > limit) {
        return errorResponse(429, "limit_exceeded", "this board holds as much media as it may");
    }
    if (auto stored = store.putMedia(coupleId, id, record, request.body, now); !stored) {
        return std::unexpected(std::move(stored.error()));
    }
    return jsonResponse(201, "{}");
}

StoreResult<ServerResponse> get(Store& store, const std::string& coupleId, const UUID& id) {
    const auto record = store.media(coupleId, id);
    if (!record) return std::unexpected(record.error());
    if (!*record) return noSuchMedia();
    auto bytes = store.readMedia(coupleId, id);
    if (!bytes) return std::unexpected(std::move(bytes.error()));
    if (!*bytes) return noSuchMedia();
    return mediaResponse((*record)->contentType, std::move(**bytes));
}

} // namespace

void Routes::putMedia(Call call, Respond respond) {
    const auto id = UUID::parse(call.match.media);
    const auto type = imageTypeOf(call.request.body);
    Store::MediaRecord record{.bytes = call.request.body.size(),
                              .digest = sha256(call.request.body),
                              .contentType = std::string{type.value_or("")}};
    const auto shared = std::make_shared<const Call>(std::move(call));
    byDevice(
        *shared,
        [shared, id, record = std::move(record), limit = limits_.maxCoupleMediaBytes,
         now = ports_.clock.now()](Store& store, const DeviceRecord&) -> StoreResult<Outcome> {
            if (!id) return Outcome{noSuchMedia(), {}};
            if (record.contentType.empty()) return Outcome{badMedia("media is JPEG, PNG or WebP"), {}};
            auto response = put(store, shared->match.id, *id, record, shared->request, limit, now);
            if (!response) return std::unexpected(std::move(response.error()));
            return Outcome{std::move(*response), {}};
        },
        std::move(respond));
}

void Routes::getMedia(const Call& call, Respond respond) {
    byDevice(
        call,
        [coupleId = call.match.id, id = UUID::parse(call.match.media)](Store& store,
                                                                       const DeviceRecord&) -> StoreResult<Outcome> {
            if (!id) return Outcome{noSuchMedia(), {}};
            auto response = get(store, coupleId, *id);
            if (!response) return std::unexpected(std::move(response.error()));
            return Outcome{std::move(*response), {}};
        },
        std::move(respond));
}

} // namespace lumaro
