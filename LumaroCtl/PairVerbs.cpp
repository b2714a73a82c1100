// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/BoardText.h"
#include "LumaroControl/JoinText.h"
#include "LumaroControl/Moments.h"
#include "LumaroCore/Pairing/InviteLink.h"
#include "LumaroCore/Pairing/PairingClient.h"
#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCtl/NetworkVerbs.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace lumaro {
namespace {

ExitStatus statusOf(PairingFailure::Case kind) {
    switch (kind) {
    case PairingFailure::Case::choosePerson: return ExitStatus::usage;
    case PairingFailure::Case::server:
    case PairingFailure::Case::offline: return ExitStatus::unavailable;
    case PairingFailure::Case::rateLimited: return ExitStatus::busy;
    case PairingFailure::Case::linkUsed:
    case PairingFailure::Case::linkExpired:
    case PairingFailure::Case::linkNotFound:
    case PairingFailure::Case::codeUsed:
    case PairingFailure::Case::codeExpired:
    case PairingFailure::Case::codeNotFound: return ExitStatus::refused;
    }
    return ExitStatus::refused;
}

VerbFailure failureOf(const PairingFailure& failure) {
    std::string text{failure.text()};
    if (failure.kind == PairingFailure::Case::choosePerson) {
        text += " --as a is " + nameOfSlot(failure.names, PartnerID::a) + ", --as b is " +
                nameOfSlot(failure.names, PartnerID::b);
    }
    return {statusOf(failure.kind), std::move(text)};
}

PairingClient pairingOn(Network& network, const std::string& server) {
    return {server, LUMARO_VERSION, network.http, network.log};
}

// Runs one call of the pairing service to its end.
template <class T, class Start>
Profile::Result<T> outcomeOf(Network& network, Start start) {
    std::optional<std::expected<T, PairingFailure>> outcome;
    const PairingClient::Call call = start([&](std::expected<T, PairingFailure> got) {
        outcome = std::move(got);
        network.loop.quit();
    });
    network.loop.run();
    if (!*outcome) return std::unexpected(failureOf(outcome->error()));
    if constexpr (std::is_void_v<T>) {
        return {};
    } else {
        return std::move(**outcome);
    }
}

// A profile that only this process may change, and the server that a verb talks to.
struct OpenProfile {
    Profile profile;
    FolderLock lock;
    std::string server;
};

Profile::Result<OpenProfile> openForChange(Network& network) {
    auto profile = network.openProfile();
    if (!profile) return std::unexpected(std::move(profile.error()));
    auto server = network.serverFor(*profile);
    if (!server) return std::unexpected(std::move(server.error()));
    if (auto made = profile->createFolder(); !made) return std::unexpected(std::move(made.error()));
    auto lock = network.takeLock(*profile);
    if (!lock) return std::unexpected(std::move(lock.error()));
    if (auto named = profile->nameDevice(); !named) return std::unexpected(std::move(named.error()));
    return OpenProfile{std::move(*profile), std::move(*lock), std::move(*server)};
}

Profile::Result<void> pair(OpenProfile& opened, const std::string& token, const std::string& name) {
    auto parsed = CoupleToken::parse(token);
    if (!parsed) return std::unexpected(VerbFailure{ExitStatus::unavailable, "the server gave a token that is none"});
    return opened.profile.pair(std::move(*parsed), opened.server, name);
}

} // namespace

ExitStatus runStart(const NetworkOptions& options, Streams streams, const std::string& name) {
    Network network{options};
    auto opened = openForChange(network);
    if (!opened) return fail(streams, "start", opened.error());
    if (opened->profile.token()) {
        return fail(streams, ExitStatus::refused,
                    " start: this profile is on a board; `lumaroctl leave` it, or take another --profile");
    }
    auto pairing = pairingOn(network, opened->server);
    const auto created = outcomeOf<CreatedCouple>(network, [&](PairingClient::Then<CreatedCouple> then) {
        return pairing.createCouple(opened->profile.facts().deviceId, name, std::move(then));
    });
    if (!created) return fail(streams, "start", created.error());
    if (const auto paired = pair(*opened, created->token, name); !paired) return fail(streams, "start", paired.error());
    streams.out << onOneLine(created->invite.link) << '\n';
    streams.err << "your board is there. give your partner this link, or six digits from `lumaroctl code`\n";
    return ExitStatus::ok;
}

namespace {

// A board that this device is on: enough to leave it when the profile is on another.
struct JoinedBoard {
    CoupleToken token;
    std::string server;
};

enum class Reach : std::uint8_t { known, refused, away };

// Whether the room of a board still knows the token.
Reach reachOf(Network& network, const JoinedBoard& board) {
    Reach reach = Reach::away;
    HttpRequest request{"GET", CoupleEndpoints{board.server, board.token.coupleId}.snapshot(), {}, ""};
    request.headers.push_back({"authorization", board.token.authorizationHeaderValue()});
    const auto call = network.http.send(std::move(request), [&](HttpClient::Answer got) {
        if (got && got->status == 200) reach = Reach::known;
        if (got && got->status == 401) reach = Reach::refused;
        network.loop.quit();
    });
    network.loop.run();
    return reach;
}

// Takes the device off the board. Where the room refuses the token anyway there is nothing left to leave.
Profile::Result<void> leaveBoard(Network& network, const JoinedBoard& board) {
    auto pairing = pairingOn(network, board.server);
    auto left = outcomeOf<void>(
        network, [&](PairingClient::Then<void> then) { return pairing.leave(board.token, std::move(then)); });
    if (!left && reachOf(network, board) == Reach::refused) return {};
    return left;
}

// The board that a join would take the profile off; none where it is on no board.
Profile::Result<std::optional<JoinedBoard>> boardToLeave(Network& network, const Profile& profile, bool mayLeave) {
    if (!profile.token()) return std::nullopt;
    if (!mayLeave) return std::unexpected(VerbFailure{ExitStatus::refused, std::string{joinWhileOnABoard}});
    JoinedBoard board{*profile.token(), profile.facts().server};
    // The join may use up a code, and cannot be taken back: what is known beforehand stops it here.
    if (reachOf(network, board) != Reach::away) return board;
    return std::unexpected(VerbFailure{ExitStatus::unavailable,
                                       "the board you are on cannot be left now, as its server does not answer; "
                                       "nothing was changed"});
}

Profile::Result<Joined> join(Network& network, const OpenProfile& opened, const JoinOptions& how) {
    auto pairing = pairingOn(network, opened.server);
    const PairingClient::Joiner joiner{opened.profile.facts().deviceId, how.name, how.slot};
    const auto inviteId = inviteIdIn(how.codeOrLink);
    return outcomeOf<Joined>(network, [&](PairingClient::Then<Joined> then) {
        return inviteId ? pairing.joinByLink(*inviteId, joiner, std::move(then))
                        : pairing.joinByCode(normalizeCode(how.codeOrLink), joiner, std::move(then));
    });
}

} // namespace

// The board that the profile is on is left last: until the other one is on disk, nothing of it is given up.
ExitStatus runJoin(const NetworkOptions& options, Streams streams, const JoinOptions& how) {
    if (const auto fault = faultOfCodeOrLink(how.codeOrLink)) {
        return fail(streams, ExitStatus::usage, " join: " + std::string{*fault});
    }
    auto wanted = options;
    if (wanted.server.empty()) wanted.server = inviteServerIn(how.codeOrLink).value_or("");
    Network network{wanted};
    auto opened = openForChange(network);
    if (!opened) return fail(streams, "join", opened.error());
    const auto before = boardToLeave(network, opened->profile, how.leave);
    if (!before) return fail(streams, "join", before.error());
    const auto joined = join(network, *opened, how);
    if (!joined) return fail(streams, "join", joined.error());
    if (const auto paired = pair(*opened, joined->token, how.name); !paired)
        return fail(streams, "join", paired.error());
    streams.err << "you are on the board of " << onOneLine(joined->partnerName) << " as " << nameOf(joined->slot)
                << '\n';
    if (*before && (*before)->token.coupleId != joined->coupleId) {
        if (const auto left = leaveBoard(network, **before); !left) {
            streams.err << "the board you were on did not hear that you left: " << onOneLine(left.error().message)
                        << '\n';
        }
    }
    return ExitStatus::ok;
}

namespace {

// A call about the board that the profile is on, which leaves the profile as it is.
template <class T, class Start>
Profile::Result<T> askAboutBoard(Network& network, Start start) {
    const auto profile = network.openPairedProfile();
    if (!profile) return std::unexpected(profile.error());
    const auto server = network.serverFor(*profile);
    if (!server) return std::unexpected(server.error());
    auto pairing = pairingOn(network, *server);
    return outcomeOf<T>(network,
                        [&](PairingClient::Then<T> then) { return start(pairing, *profile, std::move(then)); });
}

} // namespace

ExitStatus runCode(const NetworkOptions& options, Streams streams) {
    Network network{options};
    const auto code = askAboutBoard<ShareCode>(
        network, [](PairingClient& pairing, const Profile& profile, PairingClient::Then<ShareCode> then) {
            return pairing.createCode(*profile.token(), profile.facts().name, std::move(then));
        });
    if (!code) return fail(streams, "code", code.error());
    streams.out << onOneLine(code->code) << '\n';
    streams.err << "good once, until " << timeOfDayText(code->expiresAt) << "; whoever joins with it is "
                << nameOf(code->slot) << '\n';
    return ExitStatus::ok;
}

ExitStatus runLink(const NetworkOptions& options, Streams streams) {
    Network network{options};
    const auto link = askAboutBoard<Invite>(
        network, [](PairingClient& pairing, const Profile& profile, PairingClient::Then<Invite> then) {
            return pairing.mintLink(*profile.token(), profile.facts().name, std::move(then));
        });
    if (!link) return fail(streams, "link", link.error());
    streams.out << onOneLine(link->link) << '\n';
    streams.err << "good until " << momentText(link->expiresAt) << '\n';
    return ExitStatus::ok;
}

ExitStatus runLeave(const NetworkOptions& options, Streams streams) {
    Network network{options};
    if (const auto paired = network.openPairedProfile(); !paired) return fail(streams, "leave", paired.error());
    auto opened = openForChange(network);
    if (!opened) return fail(streams, "leave", opened.error());
    const auto left = leaveBoard(network, {*opened->profile.token(), opened->server});
    if (!left) return fail(streams, "leave", left.error());
    if (const auto gone = opened->profile.unpair(); !gone) return fail(streams, "leave", gone.error());
    return ExitStatus::ok;
}

} // namespace lumaro
