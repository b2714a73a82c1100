// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/HoursSharing.h"

#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view sharesHoursKey = "sharesHours";

} // namespace

HoursSharing::HoursSharing(Ports ports, HoursState& state, PresenceSender& presence, Announcer& announcer)
    : ports_(ports), state_(state), presence_(presence), announcer_(announcer) {
    state_.hoursConsent = consentIn(ports_.defaults, sharesHoursKey);
    follow();
}

void HoursSharing::share(bool shares) {
    const Announcer::Update update{announcer_};
    state_.hoursConsent = consentOf(shares);
    ports_.defaults.setBoolean(sharesHoursKey, shares);
    announcer_.changed(AppChange::hours);
    follow();
}

void HoursSharing::follow() {
    auto zone = state_.hoursConsent == Consent::yes ? ports_.zone.identifier() : std::string{};
    presence_.setZone(zone.empty() ? std::nullopt : std::optional{std::move(zone)});
}

} // namespace lumaro
