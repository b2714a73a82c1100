// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/SeenSharing.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view sharesSeenKey = "sharesSeen";
constexpr std::string_view seenKey = "seenUntil";
/// Two clocks may be so far apart and both be right.
constexpr std::chrono::minutes clockSlack{5};

} // namespace

std::optional<Instant> newestOf(PartnerID person, const Board& board, Instant now) {
    std::optional<Instant> newest;
    for (const auto& item : board.items) {
        const bool counts = item.creator() == person && item.createdAt <= saturatingAdd(now, clockSlack);
        if (counts && (!newest || item.createdAt > *newest)) newest = item.createdAt;
    }
    return newest;
}

SeenSharing::SeenSharing(Ports ports, SeenState& state, PresenceSender& presence, Announcer& announcer)
    : ports_(ports), state_(state), presence_(presence), announcer_(announcer), memory_(ports.defaults, seenKey) {
    state_.sharesSeen = ports_.defaults.boolean(sharesSeenKey).value_or(false);
}

void SeenSharing::enter(const std::string& coupleId) {
    newest_.reset();
    seen_ = instantIn(memory_.enter(coupleId));
    tell();
}

void SeenSharing::leave() {
    memory_.forget();
    newest_.reset();
    seen_.reset();
    glance_.reset();
    tell();
}

void SeenSharing::setLooking(bool isLooking) {
    isLooking_ = isLooking;
    if (!isLooking) return glance_.reset();
    look();
}

void SeenSharing::follow(const Board& board, PartnerID me) {
    newest_ = newestOf(other(me), board, ports_.clock.now());
    if (isLooking_) look();
    tell();
}

void SeenSharing::share(bool shares) {
    const Announcer::Update update{announcer_};
    state_.sharesSeen = shares;
    ports_.defaults.setBoolean(sharesSeenKey, shares);
    announcer_.changed(AppChange::ownPresence);
    tell();
}

void SeenSharing::look() {
    const bool isNews = newest_ && (!seen_ || *newest_ > *seen_);
    if (isNews && !glance_) glance_ = ports_.sleeper.wait(glance, [this] { hasSeen(); });
}

void SeenSharing::hasSeen() {
    const Announcer::Update update{announcer_};
    const auto done = std::move(glance_);
    if (!newest_) return;
    seen_ = newest_;
    memory_.keep(textOf(*seen_));
    tell();
}

// Never an instant past the newest thing that hangs there: it would speak for what is yet to come.
void SeenSharing::tell() {
    const bool tells = state_.sharesSeen && seen_ && newest_;
    presence_.setSeen(tells ? std::optional{std::min(*seen_, *newest_)} : std::nullopt);
}

} // namespace lumaro
