// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/Covers.h"

#include "LumaroCore/Music/CoverAddress.h"

#include <utility>

namespace lumaro {
namespace {

constexpr Seconds patience{20};

bool keepAs(MediaCache& cache, const UUID& id, const std::optional<Cover>& cover) {
    return cover && cache.put(id, cover->jpeg).has_value();
}

} // namespace

void Covers::enter(CoupleEndpoints endpoints, CoupleToken token) {
    if (room_ && room_->endpoints != endpoints) leave();
    room_ = Room{std::move(endpoints), std::move(token)};
}

void Covers::leave() {
    room_.reset();
    given_.clear();
    want(std::nullopt, std::nullopt);
}

// What is shown.

void Covers::want(const std::optional<std::string>& own, const std::optional<std::string>& partner) {
    want(own_, state_.ownCover, own);
    want(partner_, state_.partnerCover, partner);
}

void Covers::want(Wanted& wanted, std::optional<UUID>& shown, const std::optional<std::string>& url) {
    if (wanted.url == url) return;
    wanted = Wanted{.url = url, .call = nullptr, .task = nullptr};
    if (std::exchange(shown, std::nullopt)) announcer_.changed(AppChange::pictures);
    fetch(wanted, shown);
}

void Covers::retryNow() {
    for (auto& [wanted, shown] : {std::pair{&own_, &state_.ownCover}, std::pair{&partner_, &state_.partnerCover}}) {
        if (!*shown && !wanted->call && !wanted->task) fetch(*wanted, *shown);
    }
}

void Covers::fetch(Wanted& wanted, std::optional<UUID>& shown) {
    auto request = wanted.url ? requestFor(*wanted.url) : std::nullopt;
    if (!request) return;
    const auto id = ports_.maker.idOf(*wanted.url);
    if (keeping_ && keptId_ == id) return; // which comes here again
    if (cache_.has(id)) {
        cache_.touch(id);
        shown = id;
        announcer_.changed(AppChange::pictures);
        return;
    }
    wanted.call = ports_.http.send(std::move(*request), [this, &wanted, &shown](HttpClient::Answer answer) {
        const auto call = std::move(wanted.call);
        if (answer && answer->isSuccess()) return keep(wanted, shown, std::move(answer->body));
        ports_.log.write(LogLevel::info, "covers",
                         "no cover: " + (answer ? std::to_string(answer->status) : answer.error().message));
    });
}

// A stranger's host gets no token, and of a room that is not ours nothing is asked.
std::optional<HttpRequest> Covers::requestFor(const std::string& url) const {
    HttpRequest request{
        .method = "GET", .url = url, .headers = {}, .body = {}, .timeout = patience, .maxBodyBytes = maxPictureBytes};
    if (CoverAddress::isOfCatalogue(url)) return request;
    const auto id = room_ ? CoverAddress::idInRoom(url, room_->endpoints.coupleId) : std::nullopt;
    if (!id) return std::nullopt;
    request.url = CoverAddress::inRoom(room_->endpoints, *id);
    request.headers = {{"authorization", room_->token.authorizationHeaderValue()}};
    return request;
}

void Covers::keep(Wanted& wanted, std::optional<UUID>& shown, std::string picture) {
    const auto id = ports_.maker.idOf(*wanted.url);
    wanted.task = inBackground(
        ports_.background,
        [&maker = ports_.maker, &cache = cache_, id, picture = std::move(picture)] {
            return keepAs(cache, id, maker.ofPicture(picture));
        },
        [this, &wanted, &shown, id](bool isKept) {
            const auto task = std::move(wanted.task);
            if (!isKept) return ports_.log.write(LogLevel::info, "covers", "no cover: what came is none");
            shown = id;
            announcer_.changed(AppChange::pictures);
        });
}

// What is given.

std::unique_ptr<HttpClient::Call> Covers::give(const Cover& cover, Given then) {
    if (!room_) return nullptr;
    return ports_.http.send(
        {.method = "PUT",
         .url = CoverAddress::inRoom(room_->endpoints, cover.id),
         .headers = {{"authorization", room_->token.authorizationHeaderValue()}, {"content-type", "image/jpeg"}},
         .body = cover.jpeg,
         .timeout = patience},
        std::move(then));
}

std::optional<std::string> Covers::urlOfGiven(const UUID& id) const {
    if (!room_ || given_.find(id) == nullptr) return std::nullopt;
    return CoverAddress::inRoom(room_->endpoints, id);
}

// One's own card shows it without asking the room.
void Covers::given(const Cover& cover) {
    if (!room_) return;
    given_.put(cover.id, true);
    keptId_ = ports_.maker.idOf(CoverAddress::inRoom(room_->endpoints, cover.id));
    keeping_ = inBackground(
        ports_.background, [&cache = cache_, id = keptId_, cover] { return keepAs(cache, id, cover); },
        [this](bool) {
            keeping_.reset();
            retryNow();
        });
}

} // namespace lumaro
