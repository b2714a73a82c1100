// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/HandOff.h"

#include "LumaroCore/Pairing/InviteLink.h"
#include "LumaroCore/Protocol/ServerAddress.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

std::vector<HandOff::Invite> invitesIn(const std::vector<std::string>& origins) {
    std::vector<HandOff::Invite> invites;
    for (const auto& origin : origins) {
        auto id = inviteIdIn(origin);
        if (!id || std::ranges::find(invites, *id, &HandOff::Invite::id) != invites.end()) continue;
        auto server = inviteServerIn(origin);
        if (server && !ServerAddress::parse(*server)) continue;
        invites.push_back({std::move(*id), std::move(server)});
        if (invites.size() == DownloadOrigin::maxOrigins) break;
    }
    return invites;
}

PairingFailure nobodyAsked() {
    constexpr int notFound = 404;
    PairingFailure failure;
    failure.kind = PairingFailure::Case::linkNotFound;
    failure.status = notFound;
    return failure;
}

} // namespace

void HandOff::look(Found then) {
    then_ = std::move(then);
    originTask_ = inBackground(
        ports_.background, [&origin = ports_.origin] { return origin.origins(); },
        [this](const std::vector<std::string>& origins) { ask(invitesIn(origins)); });
}

void HandOff::stop() {
    then_ = nullptr;
    originTask_.reset();
    call_ = nullptr;
}

void HandOff::ask(std::vector<Invite> waiting) {
    const auto named = waiting.empty() ? std::nullopt : waiting.front().serverURL;
    const auto server = named.value_or(membership_.serverURL());
    // A build that knows no server has nobody to ask.
    if (server.empty()) return answered(std::move(waiting), std::unexpected(nobodyAsked()));
    const auto id = waiting.empty() ? std::nullopt : std::optional{waiting.front().id};
    call_ = service_.client(server).handoff(
        id, [this, waiting = std::move(waiting)](const std::expected<Handoff, PairingFailure>& answer) mutable {
            answered(std::move(waiting), answer);
        });
}

void HandOff::answered(std::vector<Invite> waiting, const std::expected<Handoff, PairingFailure>& answer) {
    if (answer) return finish(waiting.empty() ? Invite{answer->inviteId, {}} : std::move(waiting.front()));
    if (!waiting.empty()) waiting.erase(waiting.begin());
    if (!waiting.empty()) return ask(std::move(waiting));
    finish(std::unexpected(answer.error()));
}

void HandOff::finish(const std::expected<Invite, PairingFailure>& found) {
    if (auto then = std::exchange(then_, nullptr)) then(found);
}

} // namespace lumaro
