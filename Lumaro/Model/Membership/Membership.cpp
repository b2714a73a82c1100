// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/Membership.h"

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Overloaded.h"

#include <utility>

namespace lumaro {
namespace {

constexpr int keychainAttempts = 5;
constexpr Seconds keychainPause{2};

// The couple whose token is to be removed, until the keyring has done so: it may stop before it hears of it.
constexpr std::string_view leftCoupleIdKey = "leftCoupleId";

std::string numberOf(SecretStatus status) {
    return std::to_string(static_cast<std::int32_t>(status));
}

bool isWebURL(std::string_view url) {
    return url.starts_with("https://") || url.starts_with("http://");
}

} // namespace

Membership::Membership(Setup setup, Ports ports, MembershipState& state, Announcer& announcer, Listener& listener)
    : setup_(std::move(setup)), ports_(ports), state_(state), announcer_(announcer), listener_(listener) {
    state_.wasPaired = ports_.defaults.string("pairedCoupleId").has_value();
    const auto url = ports_.defaults.string("serverURL");
    state_.serverURL = url && isWebURL(*url) ? *url : setup_.defaultServerURL;
    if (ports_.defaults.string("secretPlace") == nameOf(SecretPlace::file)) state_.secretPlace = SecretPlace::file;
}

KeychainStore Membership::keychain() const {
    auto& store = state_.secretPlace == SecretPlace::file ? ports_.secretFile : ports_.keyring;
    return KeychainStore{store, setup_.keychainService};
}

void Membership::setServerURL(const std::string& url) {
    if (state_.token || state_.isSettling) return;
    state_.serverURL = url;
    ports_.defaults.setString("serverURL", url);
    announcer_.changed(AppChange::membership);
}

std::string Membership::deviceId() {
    if (auto known = ports_.defaults.string("deviceId")) return *known;
    auto made = ports_.ids.next().lowerString();
    ports_.defaults.setString("deviceId", made);
    return made;
}

// Restoring.

void Membership::restore() {
    state_.wasPaired = ports_.defaults.string("pairedCoupleId").has_value();
    state_.keychainLocked = false;
    state_.isRestoring = true;
    announcer_.changed(AppChange::membership);
    readToken(1);
}

void Membership::retry() {
    if (state_.isSettling) return;
    keychain().askAgain();
    restoreWait_ = ports_.sleeper.wait(Seconds{0}, [this] { restore(); });
}

void Membership::readToken(int attempt) {
    secretTask_ = inBackground(
        ports_.background, [keychain = keychain()] { return keychain.read(KeychainAccount::joinToken); },
        [this, attempt](const ReadResult& read) { tokenRead(read, attempt); });
}

void Membership::tokenRead(const ReadResult& read, int attempt) {
    const Announcer::Update update{announcer_};
    std::visit(Overloaded{
                   [this](const ReadResult::Found& found) {
                       auto token = CoupleToken::parse(found.data);
                       if (!token) {
                           log(LogLevel::error, "restoreSession: stored token did not parse");
                           return restored(false);
                       }
                       if (ports_.defaults.string(leftCoupleIdKey) == token->coupleId) {
                           state_.keychainLocked = false;
                           listener_.foundLeftBoard(*token);
                           removeToken();
                           return notRestored();
                       }
                       log(LogLevel::info, "restoreSession: token restored, connecting");
                       state_.keychainLocked = false;
                       state_.token = std::move(*token);
                       listener_.cameOntoBoard(false);
                       restored(false);
                   },
                   [&](const ReadResult::Failed& failed) {
                       // Where nothing keeps secrets and nothing was ever kept, nothing is locked.
                       const bool isMissing = failed.status == SecretStatus::noService && !state_.wasPaired;
                       isMissing ? notRestored() : keychainFailed(failed.status, attempt);
                   },
                   [this](const ReadResult::Empty&) {
                       state_.keychainLocked = false;
                       notRestored();
                   },
               },
               read.value);
}

void Membership::keychainFailed(SecretStatus status, int attempt) {
    log(LogLevel::error,
        "restoreSession: keychain read failed (OSStatus " + numberOf(status) + "), attempt " + std::to_string(attempt));
    state_.keychainLocked = true;
    announcer_.changed(AppChange::membership);
    restoreWait_ = ports_.sleeper.wait(
        keychainPause, [this, attempt] { attempt < keychainAttempts ? readToken(attempt + 1) : notRestored(); });
}

void Membership::notRestored() {
    if (state_.keychainLocked) {
        log(LogLevel::error, "restoreSession: the keychain would not open; waiting to be asked again");
    } else if (state_.wasPaired) {
        log(LogLevel::info, "restoreSession: paired before, no token now");
    } else {
        log(LogLevel::info, "restoreSession: no token and never paired");
    }
    restored(!state_.keychainLocked && !state_.wasPaired);
}

void Membership::restored(bool isNew) {
    const Announcer::Update update{announcer_};
    state_.isRestoring = false;
    announcer_.changed(AppChange::membership);
    listener_.sessionRestored(isNew);
}

// A new token.

void Membership::keep(CoupleToken token, std::optional<std::string> serverURL, Kept then) {
    const Announcer::Update update{announcer_};
    keeping_ = Keeping{std::move(token), std::move(serverURL), std::move(then)};
    state_.isSettling = true;
    announcer_.changed(AppChange::membership);
    saveToken();
}

void Membership::saveToken() {
    secretTask_ = inBackground(
        ports_.background,
        [keychain = keychain(), raw = keeping_->token.raw]() mutable {
            return keychain.save(raw, KeychainAccount::joinToken);
        },
        [this](KeychainStore::Result<void> saved) { tokenSaved(saved); });
}

void Membership::tokenSaved(KeychainStore::Result<void> saved) {
    const Announcer::Update update{announcer_};
    announcer_.changed(AppChange::membership);
    if (!saved && saved.error() == SecretStatus::noService && state_.secretPlace == SecretPlace::keyring) {
        // The person says whether a file will do, and the pairing goes on from there.
        state_.secretPlace = SecretPlace::asking;
        return;
    }
    auto keeping = std::move(*std::exchange(keeping_, std::nullopt));
    state_.isSettling = false;
    if (!saved) {
        log(LogLevel::error, "the token could not be kept (OSStatus " + numberOf(saved.error()) + ")");
        return keeping.then(std::unexpected("this computer's keyring would not keep the key to your board"));
    }
    if (keeping.serverURL && isWebURL(*keeping.serverURL)) state_.serverURL = std::move(*keeping.serverURL);
    // Whatever a later build has built in, this board lives here.
    ports_.defaults.setString("serverURL", state_.serverURL);
    ports_.defaults.setString("pairedCoupleId", keeping.token.coupleId);
    ports_.defaults.remove(leftCoupleIdKey);
    state_.wasPaired = true;
    const bool isSameBoard = state_.token && state_.token->coupleId == keeping.token.coupleId;
    state_.token = std::move(keeping.token);
    listener_.cameOntoBoard(!isSameBoard);
    keeping.then({});
}

void Membership::keepSecretsInFile(bool agreed) {
    if (state_.secretPlace != SecretPlace::asking) return;
    const Announcer::Update update{announcer_};
    announcer_.changed(AppChange::membership);
    state_.secretPlace = agreed ? SecretPlace::file : SecretPlace::keyring;
    if (agreed) ports_.defaults.setString("secretPlace", nameOf(SecretPlace::file));
    if (!keeping_) return;
    if (agreed) return saveToken();
    auto keeping = std::move(*std::exchange(keeping_, std::nullopt));
    state_.isSettling = false;
    keeping.then(std::unexpected("without a place for its key this computer can't be on the board"));
}

void Membership::forget() {
    const Announcer::Update update{announcer_};
    keeping_.reset();
    state_.isSettling = false;
    if (state_.secretPlace == SecretPlace::asking) state_.secretPlace = SecretPlace::keyring;
    if (state_.token) ports_.defaults.setString(leftCoupleIdKey, state_.token->coupleId);
    removeToken();
    ports_.defaults.remove("pairedCoupleId");
    state_.wasPaired = false;
    state_.token.reset();
    announcer_.changed(AppChange::membership);
}

// Off the main thread; nobody waits for it.
void Membership::removeToken() {
    secretTask_ = inBackground(
        ports_.background, [keychain = keychain()]() mutable { return keychain.remove(KeychainAccount::joinToken); },
        [this](KeychainStore::Result<void> removed) {
            if (removed) return ports_.defaults.remove(leftCoupleIdKey);
            log(LogLevel::error, "the token could not be removed (OSStatus " + numberOf(removed.error()) + ")");
        });
}

} // namespace lumaro
