// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/AppModel.h"

#include "Lumaro/Model/PairingUnderWay.h"
#include "Lumaro/Model/StarterBoard.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/BoardModel/Media.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Wire.h"

#include <array>
#include <utility>

namespace lumaro {
namespace {

constexpr Seconds presencePause{0.25};

/// Keys that were used once.
constexpr std::array<std::string_view, 2> retiredKeys{"openInvite", "needsInviteNudge"};

} // namespace

AppModel::AppModel(Setup setup, Ports ports)
    : setup_(std::move(setup)), ports_(ports), editor_({*this, ports.ids, ports.clock, ports.sleeper}),
      boardStore_(setup_.profile + "/boards", {ports.files, ports.sleeper, ports.background, ports.log}),
      media_(ports.files, setup_.profile + "/media"),
      bell_(ports.sleeper, ports.clock, [this](Instant end) { ring(end); }) {
    state_.contactsAccess = ports_.contacts.access();
    if (const auto made = ports_.files.createDirectories(setup_.profile); !made) {
        log(LogLevel::error, "the profile's folder cannot be made: " + made.error().message);
    }
    if (const auto& fault = media_.fault()) log(LogLevel::error, "the pictures cannot be read: " + fault->message);
    readSettings();
    linkTask_ = inBackground(
        ports_.secretBackground, [keychain = keychain()] { return keychain.readBoardLink(); },
        [this](KeychainStore::Result<std::optional<BoardLink>> link) {
            if (!link || state_.boardLink) return;
            state_.boardLink = std::move(*link);
            announce();
        });
    shared_ = SharedBoard{starterBoard(now()), {}, now()};
    editor_.setAuthor(slot());
    editor_.setLiveItems(board());
    showBoard();
}

AppModel::~AppModel() {
    // It may have something to tell yet.
    link_.reset();
}

void AppModel::readSettings() {
    const auto& defaults = ports_.defaults;
    state_.wasPaired = defaults.string("pairedCoupleId").has_value();
    if (const auto step = defaults.string("onboardingStep")) state_.onboarding = fromName<OnboardingStep>(*step);
    for (const auto key : retiredKeys) ports_.defaults.remove(key);
    state_.myDisplayName = defaults.string("myDisplayName").value_or("");
    state_.partnerDisplayName = defaults.string("partnerDisplayName").value_or("");
    state_.showsBoardOnDesktop = defaults.boolean("showsBoardOnDesktop").value_or(true);
    if (defaults.string("secretPlace") == nameOf(SecretPlace::file)) state_.secretPlace = SecretPlace::file;
}

void AppModel::start() {
    ports_.wallpaper.setEnabled(state_.showsBoardOnDesktop);
    offerLaunchAtLogin();
    permission_ = ports_.notifications.permission([](NotificationPermission) {});
    listening_ = ports_.signals.listen(*this);
    restoreSession();
}

void AppModel::shutdown() {
    ports_.wallpaper.setEnabled(false);
    boardStore_.flush();
    media_.flush();
}

// Once for an installation: the flag comes first, so that a failure is not tried again.
void AppModel::offerLaunchAtLogin() {
    if (!setup_.offersLaunchAtLogin || ports_.defaults.boolean("didOfferLaunchAtLogin").value_or(false)) return;
    ports_.defaults.setBoolean("didOfferLaunchAtLogin", true);
    if (ports_.loginItem.isEnabled()) return;
    if (const auto enabled = ports_.loginItem.enable(); enabled) {
        log(LogLevel::info, "registered to open at login");
    } else {
        log(LogLevel::error, "could not register for login: " + enabled.error());
    }
}

std::string AppModel::serverURL() const {
    const auto url = ports_.defaults.string("serverURL");
    const bool isWeb = url && (url->starts_with("https://") || url->starts_with("http://"));
    return isWeb ? *url : setup_.defaultServerURL;
}

std::string AppModel::deviceId() {
    if (auto known = ports_.defaults.string("deviceId")) return *known;
    auto made = ports_.ids.next().lowerString();
    ports_.defaults.setString("deviceId", made);
    return made;
}

void AppModel::setMyDisplayName(std::string_view name) {
    state_.myDisplayName = name;
    ports_.defaults.setString("myDisplayName", name);
    if (state_.token) {
        nameTask_ = pairingClient().setName(name, *state_.token, [this](std::expected<void, PairingFailure> set) {
            if (!set) log(LogLevel::error, "the name did not reach the service: " + std::string{set.error().text()});
        });
    }
    announce();
}

void AppModel::setOnboarding(std::optional<OnboardingStep> step) {
    state_.onboarding = step;
    if (step) {
        ports_.defaults.setString("onboardingStep", nameOf(*step));
    } else {
        ports_.defaults.remove("onboardingStep");
    }
    announce();
}

void AppModel::setShowsBoardOnDesktop(bool shows) {
    state_.showsBoardOnDesktop = shows;
    ports_.defaults.setBoolean("showsBoardOnDesktop", shows);
    ports_.wallpaper.setEnabled(shows);
    announce();
}

void AppModel::becameActive() {
    state_.contactsAccess = ports_.contacts.access();
    announce();
}

void AppModel::requestQuickNote(std::optional<std::string> text) {
    state_.quickNoteText = std::move(text);
    ++state_.quickNoteRequest;
    announce();
}

void AppModel::setPresence(OwnPresence presence) {
    state_.ownPresence = std::move(presence);
    sendPresenceSoon();
    announce();
}

void AppModel::sendPresenceSoon() {
    presenceCoalesceTask_ = ports_.sleeper.wait(presencePause, [this] {
        if (link_) link_->sendPresence(state_.ownPresence);
    });
}

void AppModel::storeMedia(const UUID& id, std::string bytes, MediaTransfer::Stored then) {
    if (!transfer_ || !link_) return then(std::unexpected(MediaError{}));
    link_->holdMedia(id);
    transfer_->putUp(id, std::move(bytes), [this, id, then = std::move(then)](auto stored) mutable {
        if (!stored && link_) link_->releaseMedia(id);
        then(std::move(stored));
    });
}

void AppModel::arrived(const UUID&) {
    ports_.wallpaper.refresh();
    announce();
}

void AppModel::wentUp(const UUID& id) {
    if (link_) link_->releaseMedia(id);
}

void AppModel::couldNotGoUp(const UUID& id, MediaFault why) {
    log(LogLevel::error, "a picture could not go up");
    for (const auto& item : Board{board()}.items) {
        if (mediumOf(item.payload) != id) continue;
        if (auto gone = Edits::takeDown(board(), item.id, {slot(), now()})) static_cast<void>(act(std::move(*gone)));
    }
    if (link_) link_->releaseMedia(id);
    say(std::string{textOf(why)});
}

void AppModel::wokeFromSleep() {
    networkChanged();
    scheduleNextExpiry();
    bell_.watch(board(), slot());
}

void AppModel::networkChanged() {
    if (link_) link_->retryNow();
    if (transfer_) transfer_->retryNow();
}

Instant AppModel::now() const {
    return Wire::truncatedToMilliseconds(ports_.clock.now());
}

void AppModel::say(std::string notice) {
    state_.notice = std::move(notice);
    ++state_.notices;
    announce();
}

void AppModel::announce() const {
    if (changed_) changed_();
}

} // namespace lumaro
