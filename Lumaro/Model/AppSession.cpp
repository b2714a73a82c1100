// SPDX-License-Identifier: Apache-2.0
// The session: how it is restored, how this device comes onto a board and how it leaves.
#include "Lumaro/Model/AppModel.h"
#include "Lumaro/Model/PairingUnderWay.h"
#include "Lumaro/Model/StarterBoard.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Overloaded.h"

#include <utility>

namespace lumaro {
namespace {

constexpr int keychainAttempts = 5;
constexpr Seconds keychainPause{2};
constexpr Seconds greetingSpan{6};

std::string numberOf(SecretStatus status) {
    return std::to_string(static_cast<std::int32_t>(status));
}

} // namespace

KeychainStore AppModel::keychain() {
    auto& store = state_.secretPlace == SecretPlace::file ? ports_.secretFile : ports_.keyring;
    return KeychainStore{store, setup_.keychainService};
}

PairingClient AppModel::pairingClient() {
    return PairingClient{serverURL(), setup_.version, ports_.http, ports_.log};
}

// Restoring.

void AppModel::restoreSession() {
    state_.wasPaired = ports_.defaults.string("pairedCoupleId").has_value();
    state_.keychainLocked = false;
    state_.isRestoring = true;
    announce();
    readToken(1);
}

void AppModel::retryKeychain() {
    if (state_.isSettling) return;
    keychain().askAgain();
    restoreWait_ = ports_.sleeper.wait(Seconds{0}, [this] { restoreSession(); });
}

void AppModel::readToken(int attempt) {
    secretTask_ = inBackground(
        ports_.secretBackground, [keychain = keychain()] { return keychain.read(KeychainAccount::joinToken); },
        [this, attempt](const ReadResult& read) { tokenRead(read, attempt); });
}

void AppModel::tokenRead(const ReadResult& read, int attempt) {
    std::visit(Overloaded{
                   [this](const ReadResult::Found& found) {
                       auto token = CoupleToken::parse(found.data);
                       if (!token) {
                           log(LogLevel::error, "restoreSession: stored token did not parse");
                           return restored();
                       }
                       log(LogLevel::info, "restoreSession: token restored, connecting");
                       state_.keychainLocked = false;
                       adopt(std::move(*token));
                       restored();
                   },
                   [&](const ReadResult::Failed& failed) {
                       // Where nothing keeps secrets and nothing was ever kept, nothing is locked.
                       const bool isMissing = failed.status == SecretStatus::noService && !state_.wasPaired;
                       isMissing ? sessionNotRestored() : keychainFailed(failed.status, attempt);
                   },
                   [this](const ReadResult::Empty&) {
                       state_.keychainLocked = false;
                       sessionNotRestored();
                   },
               },
               read.value);
}

void AppModel::keychainFailed(SecretStatus status, int attempt) {
    log(LogLevel::error,
        "restoreSession: keychain read failed (OSStatus " + numberOf(status) + "), attempt " + std::to_string(attempt));
    state_.keychainLocked = true;
    announce();
    restoreWait_ = ports_.sleeper.wait(
        keychainPause, [this, attempt] { attempt < keychainAttempts ? readToken(attempt + 1) : sessionNotRestored(); });
}

void AppModel::sessionNotRestored() {
    if (state_.keychainLocked) {
        log(LogLevel::error, "restoreSession: the keychain would not open; waiting to be asked again");
    } else if (state_.wasPaired) {
        log(LogLevel::info, "restoreSession: paired before, no token now");
    } else {
        log(LogLevel::info, "restoreSession: no token and never paired");
        if (!asked_) askForHandoff();
    }
    restored();
}

void AppModel::restored() {
    state_.isRestoring = false;
    announce();
    if (asked_) std::exchange(asked_, nullptr)();
}

void AppModel::askForHandoff() {
    pairingCall_ = pairingClient().handoff(std::nullopt, [this](std::expected<std::string, PairingFailure> invite) {
        if (invite) {
            log(LogLevel::info, "an invite was waiting for this mac");
            pairing_ = std::make_unique<PairingUnderWay>();
            pairing_->door = JoinDoor::link;
            pairing_->key = std::move(*invite);
            pairing_->isQuiet = true;
            return join();
        }
        if (invite.error().status == 404) {
            log(LogLevel::info, "no invite waiting for this mac; first run it is");
        } else {
            log(LogLevel::error, "pairing request failed: " + std::string{invite.error().text()});
        }
        if (!state_.onboarding) setOnboarding(OnboardingStep::welcome);
    });
}

// Onto a board.

// A link that is opened starts the program: the pairing waits until it is known what board this device is on, and
// then goes before an invite that may be waiting.
void AppModel::pairAsAsked(std::move_only_function<void()> pairing) {
    if (state_.isSettling) return;
    pairingCall_ = nullptr;
    pairing_.reset();
    state_.pairing.value = PairingPhase::Working{};
    if (!state_.onboarding && !state_.wasPaired) setOnboarding(OnboardingStep::welcome);
    asked_ = std::move(pairing);
    if (!state_.isRestoring) return restored();
    announce();
}

void AppModel::pair(std::string_view token, Paired then) {
    auto parsed = CoupleToken::parse(token);
    if (!parsed) return then(std::unexpected(parsed.error().errorDescription()));
    if (!pairing_) pairing_ = std::make_unique<PairingUnderWay>();
    pairing_->token = std::move(*parsed);
    pairing_->then = std::move(then);
    state_.isSettling = true;
    announce();
    saveToken();
}

void AppModel::saveToken() {
    secretTask_ = inBackground(
        ports_.secretBackground,
        [keychain = keychain(), raw = pairing_->token->raw]() mutable {
            return keychain.save(raw, KeychainAccount::joinToken);
        },
        [this](KeychainStore::Result<void> saved) { tokenSaved(saved); });
}

void AppModel::tokenSaved(KeychainStore::Result<void> saved) {
    if (!saved && saved.error() == SecretStatus::noService && state_.secretPlace == SecretPlace::keyring) {
        // The person says whether a file will do, and the pairing goes on from there.
        state_.secretPlace = SecretPlace::asking;
        return announce();
    }
    const auto pairing = std::exchange(pairing_, nullptr);
    state_.isSettling = false;
    if (!saved) {
        log(LogLevel::error, "the token could not be kept (OSStatus " + numberOf(saved.error()) + ")");
        pairing->then(std::unexpected("this computer's keyring would not keep the key to your board"));
        return announce();
    }
    ports_.defaults.setString("pairedCoupleId", pairing->token->coupleId);
    state_.wasPaired = true;
    const bool isSameBoard = state_.token && state_.token->coupleId == pairing->token->coupleId;
    if (!isSameBoard) forgetBoard();
    adopt(std::move(*pairing->token));
    pairing->then({});
    announce();
}

void AppModel::keepSecretsInFile(bool agreed) {
    if (state_.secretPlace != SecretPlace::asking) return;
    state_.secretPlace = agreed ? SecretPlace::file : SecretPlace::keyring;
    if (agreed) ports_.defaults.setString("secretPlace", nameOf(SecretPlace::file));
    if (agreed && state_.boardLink) keepBoardLink(state_.boardLink);
    announce();
    if (!pairing_) return;
    if (agreed) return saveToken();
    const auto pairing = std::exchange(pairing_, nullptr);
    state_.isSettling = false;
    pairing->then(std::unexpected("without a place for its key this computer can't be on the board"));
    announce();
}

void AppModel::adopt(CoupleToken token) {
    link_.reset();
    transfer_.reset();
    state_.token = std::move(token);
    state_.connectionRejected = false;
    state_.partnerNames.clear();
    if (!state_.myDisplayName.empty()) state_.partnerNames[slot()] = state_.myDisplayName;
    if (!state_.partnerDisplayName.empty()) state_.partnerNames[other(slot())] = state_.partnerDisplayName;
    editor_.setAuthor(slot());
    if (auto known = boardStore_.load(state_.token->coupleId)) {
        shared_ = SharedBoard{std::move(*known), {}, now()};
        boardStore_.save(state_.token->coupleId, shared_.confirmed());
    } else if (isStarter_) {
        shared_ = {}; // what hung there for a welcome belongs on no shared board
    }
    isStarter_ = false;
    editor_.setLiveItems(board());
    showBoard();
    // The room may have nothing new to tell.
    bell_.watch(board(), slot());
    if (!mutant(Mutant::expiryWaitsForNews)) scheduleNextExpiry();
    ports_.wallpaper.refresh();
    connect();
}

void AppModel::connect() {
    if (!state_.token) return log(LogLevel::info, "connect: no token");
    link_.reset();
    MediaTransfer::Listener& listener = *this;
    transfer_ = std::make_unique<MediaTransfer>(
        CoupleEndpoints{serverURL(), state_.token->coupleId}, *state_.token, media_,
        MediaTransfer::Ports{ports_.http, ports_.sleeper, ports_.background, ports_.log}, listener);
    auto opened = ports_.rooms.open({serverURL(), *state_.token, deviceId(), transfer_->waitingToGoUp()}, *this);
    if (!opened) return log(LogLevel::error, "connect: SyncClient init failed: " + opened.error());
    log(LogLevel::info, "connect: client created for " + state_.token->redacted());
    link_ = std::move(*opened);
    transfer_->want(board());
    announce();
}

void AppModel::startOurBoard() {
    pairAsAsked([this] {
        if (state_.token) {
            state_.pairing.value = PairingPhase::Failed{"you're on a board already; leave it first"};
            return announce();
        }
        pairingCall_ = pairingClient().createCouple(deviceId(), state_.myDisplayName,
                                                    [this](auto created) { startedBoard(std::move(created)); });
    });
}

void AppModel::startedBoard(std::expected<CreatedCouple, PairingFailure> created) {
    if (!created) return pairingFailed(created.error(), "startOurBoard failed: ");
    keepBoardLink(BoardLink{created->coupleId, created->invite.inviteId, created->invite.link});
    pair(created->token, [this](std::expected<void, std::string> paired) {
        if (!paired) {
            state_.pairing.value = PairingPhase::Failed{paired.error()};
            return log(LogLevel::error, "startOurBoard failed: " + paired.error());
        }
        state_.pairing.value = PairingPhase::Idle{};
        setOnboarding(OnboardingStep::bringThemOver);
        log(LogLevel::info, "started a new board");
    });
}

void AppModel::joinByCode(std::string_view typed) {
    joinThrough(JoinDoor::code, normalizeCode(typed));
}

void AppModel::joinByLink(std::string_view text) {
    const auto invite = inviteIdIn(text);
    if (!invite) {
        PairingFailure failure;
        failure.kind = PairingFailure::Case::linkNotFound;
        return pairingFailed(failure, "pairing request failed: ");
    }
    joinThrough(JoinDoor::link, *invite);
}

void AppModel::joinThrough(JoinDoor door, std::string key) {
    pairAsAsked([this, door, key = std::move(key)]() mutable {
        pairing_ = std::make_unique<PairingUnderWay>();
        pairing_->door = door;
        pairing_->key = std::move(key);
        join();
    });
}

void AppModel::chooseOneself(PartnerID slot) {
    if (!pairing_ || !std::holds_alternative<PairingPhase::Choosing>(state_.pairing.value)) return;
    pairing_->slot = slot;
    join();
}

void AppModel::join() {
    if (!pairing_->isQuiet) state_.pairing.value = PairingPhase::Working{};
    announce();
    const PairingClient::Joiner joiner{deviceId(), state_.myDisplayName, pairing_->slot};
    auto then = [this](std::expected<Joined, PairingFailure> answer) { joined(std::move(answer)); };
    pairingCall_ = pairing_->door == JoinDoor::link
                       ? pairingClient().joinByLink(pairing_->key, joiner, std::move(then))
                       : pairingClient().joinByCode(pairing_->key, joiner, std::move(then));
}

void AppModel::joined(std::expected<Joined, PairingFailure> answer) {
    if (!answer) {
        if (answer.error().kind == PairingFailure::Case::choosePerson) {
            state_.pairing.value = PairingPhase::Choosing{answer.error().names, answer.error().suggested};
            return announce();
        }
        const bool isQuiet = std::exchange(pairing_, nullptr)->isQuiet;
        pairingFailed(answer.error(), "pairing request failed: ");
        if (isQuiet) {
            state_.pairing.value = PairingPhase::Idle{};
            setOnboarding(OnboardingStep::welcome);
        }
        return;
    }
    pair(answer->token, [this, joined = *answer](std::expected<void, std::string> paired) {
        if (!paired) {
            state_.pairing.value = PairingPhase::Failed{paired.error()};
            return;
        }
        state_.pairing.value = PairingPhase::Idle{};
        setOnboarding(std::nullopt);
        learnPartnerName(joined.partnerName);
        state_.arrival = Arrival{joined.partnerName, joined.status, now()};
        greetingTask_ = ports_.sleeper.wait(greetingSpan, [this] {
            state_.arrival.reset();
            announce();
        });
    });
}

void AppModel::pairingFailed(const PairingFailure& failure, std::string_view what) {
    log(LogLevel::error, std::string{what} + std::string{failure.text()});
    state_.pairing.value = PairingPhase::Failed{std::string{failure.text()}};
    announce();
}

void AppModel::forgetPairingFailure() {
    if (std::holds_alternative<PairingPhase::Working>(state_.pairing.value)) return;
    pairing_.reset();
    state_.pairing.value = PairingPhase::Idle{};
    announce();
}

// While on a board.

void AppModel::mintCode() {
    if (!state_.token) return;
    state_.isMintingCode = true;
    announce();
    codeCall_ = pairingClient().createCode(*state_.token, state_.myDisplayName, [this](auto code) {
        state_.isMintingCode = false;
        if (!code) return say(std::string{code.error().text()});
        state_.shareCode = std::move(*code);
        announce();
    });
}

void AppModel::resetLinks() {
    if (!state_.token) return;
    linksCall_ = pairingClient().resetLinks(*state_.token, [this](std::expected<void, PairingFailure> reset) {
        if (!reset) return say(std::string{reset.error().text()});
        keepBoardLink(std::nullopt);
        linksCall_ = pairingClient().mintLink(*state_.token, state_.myDisplayName, [this](auto invite) {
            if (!invite) return say(std::string{invite.error().text()});
            keepBoardLink(BoardLink{state_.token->coupleId, invite->inviteId, invite->link});
        });
    });
}

void AppModel::releasePartner() {
    if (!state_.token) return;
    releaseCall_ = pairingClient().releasePartner(*state_.token, [this](std::expected<void, PairingFailure> released) {
        if (!released) return say(std::string{released.error().text()});
        learnPartnerName("");
        announce();
    });
}

// Off the board.

void AppModel::leaveBoard() {
    log(LogLevel::info, "leaving the board");
    if (state_.token) {
        leaveCall_ = pairingClient().leave(*state_.token, [this](std::expected<void, PairingFailure> left) {
            if (!left) log(LogLevel::error, "the service did not hear of it: " + std::string{left.error().text()});
        });
    }
    unlink();
    forgetBoard();
    keepBoardLink(std::nullopt);
    setOnboarding(OnboardingStep::welcome);
    ports_.wallpaper.refresh();
    announce();
}

void AppModel::unlink() {
    link_.reset();
    if (state_.token) media_.forget(state_.token->coupleId);
    transfer_.reset();
    pairing_.reset();
    pairingCall_ = nullptr;
    state_.pairing.value = PairingPhase::Idle{};
    state_.isSettling = false;
    // Off the main thread; nobody waits for it.
    secretTask_ = inBackground(
        ports_.secretBackground,
        [keychain = keychain()]() mutable { return keychain.remove(KeychainAccount::joinToken); },
        [this](KeychainStore::Result<void> removed) {
            if (!removed)
                log(LogLevel::error, "the token could not be removed (OSStatus " + numberOf(removed.error()) + ")");
        });
    ports_.defaults.remove("pairedCoupleId");
    state_.wasPaired = false;
    state_.token.reset();
    state_.connectionRejected = false;
    state_.connection = {};
    state_.pendingBatches = 0;
    presenceCoalesceTask_.reset();
}

void AppModel::forgetBoard() {
    editor_.discardDraft();
    state_.presence = {};
    state_.shareCode.reset();
    learnPartnerName("");
    state_.arriving.clear();
    state_.falling.clear();
    fallingItems_.clear();
    fallTask_.reset();
    arrivalClearTask_.reset();
    expiryTask_.reset();
    bell_.stop();
    isStarter_ = true;
    shared_ = SharedBoard{starterBoard(now()), {}, now()};
    editor_.setLiveItems(board());
    showBoard();
}

void AppModel::keepBoardLink(std::optional<BoardLink> link) {
    linkTask_ = inBackground(
        ports_.secretBackground,
        [keychain = keychain(), link]() mutable {
            return link ? keychain.saveBoardLink(*link) : keychain.remove(KeychainAccount::boardLink);
        },
        [this](KeychainStore::Result<void> kept) {
            if (!kept)
                log(LogLevel::error, "the board link could not be kept (OSStatus " + numberOf(kept.error()) + ")");
        });
    state_.boardLink = std::move(link);
    announce();
}

void AppModel::learnPartnerName(const std::string& name) {
    state_.partnerDisplayName = name;
    if (name.empty()) {
        ports_.defaults.remove("partnerDisplayName");
        state_.partnerNames.erase(other(slot()));
    } else {
        ports_.defaults.setString("partnerDisplayName", name);
        state_.partnerNames[other(slot())] = name;
    }
}

} // namespace lumaro
