// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/Pairing.h"

#include "LumaroCore/Protocol/ServerAddress.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Unicode.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

constexpr Seconds greetingSpan{6};
// Of a name that a server says; it is asked before the person has chosen to trust it.
constexpr std::size_t maxNameCharacters = 64;
constexpr std::string_view noLinkYet = "paste the link they sent you, and in you come.";
constexpr std::string_view noLink = "that's no lumaro link. paste the whole message they sent you?";
constexpr std::string_view linkNotSafe =
    "that link's board can't be reached safely: out on the internet it needs https. ask them for another one?";
constexpr std::string_view noServerYet = "first say where our board is to live.";
constexpr std::string_view onBoardAlready = "you're on a board already; leave it first";

/// Keys that were used once.
constexpr std::array<std::string_view, 2> retiredKeys{"openInvite", "needsInviteNudge"};

} // namespace

Pairing::Pairing(Ports ports, PairingState& state, Neighbours neighbours)
    : ports_(ports), state_(state), neighbours_(neighbours),
      handOff_({ports.background, ports.origin}, neighbours.membership, neighbours.service) {
    if (const auto step = ports_.defaults.string("onboardingStep")) state_.onboarding = fromName<OnboardingStep>(*step);
    for (const auto key : retiredKeys) ports_.defaults.remove(key);
}

void Pairing::enter(PairingPhase::Value phase) {
    state_.pairing.value = std::move(phase);
    neighbours_.announcer.changed(AppChange::pairing);
}

void Pairing::failed(const PairingFailure& failure, std::string_view what) {
    log(LogLevel::error, std::string{what} + std::string{failure.text()});
    enter(PairingPhase::Failed{std::string{failure.text()}});
}

void Pairing::setOnboarding(std::optional<OnboardingStep> step) {
    state_.onboarding = step;
    if (step) {
        ports_.defaults.setString("onboardingStep", nameOf(*step));
    } else {
        ports_.defaults.remove("onboardingStep");
    }
    neighbours_.announcer.changed(AppChange::pairing);
}

void Pairing::begunAnew() {
    const Announcer::Update update{neighbours_.announcer};
    join_.reset();
    asked_ = nullptr;
    handOff_.stop();
    call_ = nullptr;
    enter(PairingPhase::Idle{});
    setOnboarding(OnboardingStep::welcome);
}

std::string Pairing::serverOf(const Join& join) const {
    return join.serverURL.value_or(neighbours_.membership.serverURL());
}

// A program that a link was opened with starts with it: the pairing waits until it is known what board this device is
// on, and then goes before an invite that may be waiting.
void Pairing::whenRestored(Asked pairing) {
    if (neighbours_.who.isSettling) return;
    const Announcer::Update update{neighbours_.announcer};
    handOff_.stop();
    call_ = nullptr;
    join_.reset();
    enter(PairingPhase::Working{});
    if (!state_.onboarding && !neighbours_.who.wasPaired) setOnboarding(OnboardingStep::welcome);
    if (!neighbours_.who.isRestoring) return pairing();
    asked_ = std::move(pairing);
}

void Pairing::sessionRestored(bool isNew) {
    if (asked_) return std::exchange(asked_, nullptr)();
    if (isNew) lookForInvite();
}

void Pairing::lookForInvite() {
    handOff_.look([this](const std::expected<HandOff::Invite, PairingFailure>& invite) {
        const Announcer::Update update{neighbours_.announcer};
        if (state_.pairing == PairingPhase{} && !neighbours_.who.token) handedOff(invite);
    });
}

void Pairing::handedOff(const std::expected<HandOff::Invite, PairingFailure>& invite) {
    if (invite) {
        log(LogLevel::info, "an invite was waiting for this mac");
        join_ = Join{
            .door = JoinDoor::link, .key = invite->id, .serverURL = invite->serverURL, .slot = {}, .isQuiet = true};
        return join();
    }
    if (invite.error().status == 404) {
        log(LogLevel::info, "no invite waiting for this mac; first run it is");
    } else {
        log(LogLevel::error, "pairing request failed: " + std::string{invite.error().text()});
    }
    if (!state_.onboarding) setOnboarding(OnboardingStep::welcome);
}

// A board of one's own.

void Pairing::startOurBoard(std::optional<std::string> name) {
    whenRestored([this, name = std::move(name)] {
        if (neighbours_.who.token) return enter(PairingPhase::Failed{std::string{onBoardAlready}});
        if (neighbours_.membership.serverURL().empty()) return enter(PairingPhase::Failed{std::string{noServerYet}});
        call_ = neighbours_.service.client().createCouple(
            neighbours_.membership.deviceId(), name.value_or(neighbours_.names.myDisplayName),
            [this, name](const std::expected<CreatedCouple, PairingFailure>& created) {
                const Announcer::Update update{neighbours_.announcer};
                startedBoard(created, name);
            });
    });
}

void Pairing::startedBoard(const std::expected<CreatedCouple, PairingFailure>& created,
                           std::optional<std::string> name) {
    if (!created) return failed(created.error(), "startOurBoard failed: ");
    auto token = CoupleToken::parse(created->token);
    if (!token) return failed(PairingFailure{}, "startOurBoard failed: the service gave a token that is none: ");
    neighbours_.invitations.keepLink(BoardLink{created->coupleId, created->invite.inviteId, created->invite.link});
    neighbours_.membership.keep(std::move(*token), std::nullopt,
                                [this, name = std::move(name)](std::expected<void, std::string> kept) {
                                    if (!kept) {
                                        log(LogLevel::error, "startOurBoard failed: " + kept.error());
                                        neighbours_.invitations.keepLink(std::nullopt);
                                        return enter(PairingPhase::Failed{std::move(kept.error())});
                                    }
                                    if (name) neighbours_.people.setMyName(*name);
                                    enter(PairingPhase::Idle{});
                                    setOnboarding(OnboardingStep::bringThemOver);
                                    log(LogLevel::info, "started a new board");
                                });
}

// The partner's board.

void Pairing::joinByCode(std::string_view typed, JoinTerms terms) {
    auto code = normalizeCode(typed);
    if (code.size() < joinCodeLength) return enter(PairingPhase::Failed{"a code is six digits."});
    whenRestored([this, code = std::move(code), terms = std::move(terms)]() mutable {
        if (neighbours_.who.token && terms.ownBoard == OwnBoard::stays)
            return enter(PairingPhase::Failed{std::string{onBoardAlready}});
        join_ = Join{
            .door = JoinDoor::code, .key = std::move(code), .serverURL = {}, .slot = {}, .name = std::move(terms.name)};
        const bool asks = neighbours_.who.token && terms.ownBoard == OwnBoard::askedAbout && !isOnlyStarted();
        asks ? askAboutOwnBoard() : join();
    });
}

// Nobody else is, or was, on the board, and nothing hangs there. Before the room has spoken that is known of a board
// that this device has just made.
bool Pairing::isOnlyStarted() const {
    const auto& token = neighbours_.who.token;
    const auto& names = neighbours_.names;
    if (!token || neighbours_.itemsOnBoard() > 0 || !names.partnerDisplayName.empty()) return false;
    return names.paired ? !names.paired->contains(other(token->slot))
                        : state_.onboarding == OnboardingStep::bringThemOver;
}

void Pairing::askAboutOwnBoard() {
    enter(PairingPhase::Asking{.inviter = {},
                               .server = serverOf(*join_),
                               .leavesBoard = true,
                               .isByCode = true,
                               .items = neighbours_.itemsOnBoard()});
}

void Pairing::joinByLink(std::string_view text, JoinTerms terms) {
    const Announcer::Update update{neighbours_.announcer};
    auto invite = inviteIdIn(text);
    if (!invite) {
        const bool isEmpty = trimmed(text).empty();
        return enter(PairingPhase::Failed{std::string{isEmpty ? noLinkYet : noLink}});
    }
    const auto server = inviteServerIn(text);
    const auto address = server ? std::optional{ServerAddress::parse(*server)} : std::nullopt;
    if (address && !*address) return enter(PairingPhase::Failed{std::string{linkNotSafe}});
    whenRestored([this, text = std::string{text}, invite = std::move(*invite), terms = std::move(terms)]() mutable {
        join_ = Join{.door = JoinDoor::link,
                     .key = std::move(invite),
                     .serverURL = inviteServerIn(text),
                     .slot = {},
                     .name = std::move(terms.name)};
        terms.ownBoard != OwnBoard::left&& needsAsking(*join_, text) ? askAboutInvite() : join();
    });
}

// Any page can open the program's own links, so that one which names another server is asked about even without a
// board to lose.
bool Pairing::needsAsking(const Join& join, std::string_view text) const {
    const auto& own = neighbours_.invitation.boardLink;
    if (neighbours_.who.token) return !own || own->inviteId != join.key;
    const bool isOurLink = text.find("://join-invite") != std::string_view::npos;
    return isOurLink && serverOf(join) != neighbours_.membership.serverURL();
}

void Pairing::askAboutInvite() {
    const auto server = serverOf(*join_);
    call_ = neighbours_.service.client(server).handoff(
        join_->key, [this, server](const std::expected<Handoff, PairingFailure>& invite) {
            const Announcer::Update update{neighbours_.announcer};
            if (!invite) return failed(invite.error(), "pairing request failed: ");
            const auto inviter = invite->inviter.value_or("");
            enter(PairingPhase::Asking{.inviter = std::string{firstCharacters(inviter, maxNameCharacters)},
                                       .server = server,
                                       .leavesBoard = neighbours_.who.token && !isOnlyStarted(),
                                       .isByCode = false,
                                       .items = neighbours_.who.token ? neighbours_.itemsOnBoard() : 0});
        });
}

void Pairing::acceptInvite(bool accepts) {
    if (!join_ || !std::holds_alternative<PairingPhase::Asking>(state_.pairing.value)) return;
    const Announcer::Update update{neighbours_.announcer};
    if (accepts) return join();
    join_.reset();
    enter(PairingPhase::Idle{});
}

void Pairing::chooseOneself(PartnerID slot) {
    if (!join_ || !std::holds_alternative<PairingPhase::Choosing>(state_.pairing.value)) return;
    join_->slot = slot;
    join();
}

void Pairing::goOn() {
    if (join_ && std::holds_alternative<PairingPhase::NeedsServer>(state_.pairing.value)) join();
}

// Where no server is set, a code may be of a room in this network.
bool Pairing::tryNextNearby() {
    if (join_->door != JoinDoor::code) return false;
    if (!join_->nearby) join_->nearby = neighbours_.serversNearby();
    if (join_->nearby->empty()) return false;
    join_->serverURL = std::move(join_->nearby->front());
    join_->nearby->erase(join_->nearby->begin());
    return true;
}

void Pairing::join() {
    if (serverOf(*join_).empty() && !tryNextNearby()) return enter(PairingPhase::NeedsServer{});
    if (!join_->isQuiet) enter(PairingPhase::Working{});
    const PairingClient::Joiner joiner{neighbours_.membership.deviceId(),
                                       join_->name.value_or(neighbours_.names.myDisplayName), join_->slot};
    auto then = [this](const std::expected<Joined, PairingFailure>& answer) {
        const Announcer::Update update{neighbours_.announcer};
        joined(answer);
    };
    auto client = neighbours_.service.client(serverOf(*join_));
    call_ = join_->door == JoinDoor::link ? client.joinByLink(join_->key, joiner, std::move(then))
                                          : client.joinByCode(join_->key, joiner, std::move(then));
}

void Pairing::joined(const std::expected<Joined, PairingFailure>& answer) {
    if (answer) return keepToken(*answer);
    if (answer.error().kind == PairingFailure::Case::choosePerson) {
        return enter(PairingPhase::Choosing{answer.error().names, answer.error().suggested});
    }
    using Case = PairingFailure::Case;
    const auto why = answer.error().kind;
    if (join_->nearby && (why == Case::codeNotFound || why == Case::offline || why == Case::server)) {
        join_->serverURL.reset();
        return join();
    }
    const bool isQuiet = join_->isQuiet;
    join_.reset();
    failed(answer.error(), "pairing request failed: ");
    if (!isQuiet) return;
    enter(PairingPhase::Idle{});
    setOnboarding(OnboardingStep::welcome);
}

// The board that was is left once the new one's key is safe. That it is to be left is on the disk before that key, so
// that a program that ends in between leaves no device behind on a board that nobody has a key to.
void Pairing::keepToken(const Joined& joined) {
    auto token = CoupleToken::parse(joined.token);
    auto asked = std::move(*std::exchange(join_, std::nullopt));
    if (!token) return failed(PairingFailure{}, "pairing request failed: the service gave a token that is none: ");
    auto left = neighbours_.who.token;
    if (left && left->coupleId == token->coupleId) left.reset();
    const auto server = neighbours_.membership.serverURL();
    if (left) neighbours_.leaving.intend(*left, server);
    neighbours_.membership.keep(std::move(*token), std::move(asked.serverURL),
                                [this, joined, left = std::move(left), name = std::move(asked.name),
                                 server](std::expected<void, std::string> kept) {
                                    if (left && !kept) neighbours_.leaving.callOff(*left);
                                    if (!kept) return enter(PairingPhase::Failed{std::move(kept.error())});
                                    if (left) neighbours_.leaving.tell(*left, server);
                                    settled(joined, name);
                                });
}

void Pairing::settled(const Joined& joined, const std::optional<std::string>& name) {
    if (name) neighbours_.people.setMyName(*name);
    enter(PairingPhase::Idle{});
    setOnboarding(std::nullopt);
    neighbours_.people.learnPartnerName(joined.partnerName);
    state_.arrival = Arrival{joined.partnerName, joined.status, Wire::truncatedToMilliseconds(ports_.clock.now())};
    greetingTask_ = ports_.sleeper.wait(greetingSpan, [this] {
        state_.arrival.reset();
        neighbours_.announcer.changed(AppChange::pairing);
    });
}

void Pairing::forgetFailure() {
    if (std::holds_alternative<PairingPhase::Working>(state_.pairing.value)) return;
    join_.reset();
    enter(PairingPhase::Idle{});
}

} // namespace lumaro
