// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/People.h"

#include <utility>

namespace lumaro {

People::People(Ports ports, PeopleState& state, PairingClients& service, Announcer& announcer)
    : ports_(ports), state_(state), service_(service), announcer_(announcer) {
    state_.myDisplayName = ports_.defaults.string("myDisplayName").value_or("");
    state_.partnerDisplayName = ports_.defaults.string("partnerDisplayName").value_or("");
}

void People::adopt(const CoupleToken& token) {
    token_ = token;
    state_.paired.reset();
    state_.partnerNames.clear();
    if (!state_.myDisplayName.empty()) state_.partnerNames[token.slot] = state_.myDisplayName;
    if (!state_.partnerDisplayName.empty()) state_.partnerNames[partner()] = state_.partnerDisplayName;
    refreshFaces();
    announcer_.changed(AppChange::people);
}

void People::forget() {
    token_.reset();
    state_.paired.reset();
    state_.partnerNames.clear();
    state_.partnerDisplayName.clear();
    ports_.defaults.remove("partnerDisplayName");
    announcer_.changed(AppChange::people);
}

void People::setMyName(std::string_view name) {
    state_.myDisplayName = name;
    ports_.defaults.setString("myDisplayName", name);
    if (token_) {
        rename(token_->slot, state_.myDisplayName);
        nameTask_ = service_.client().setName(name, *token_, [this](std::expected<void, PairingFailure> set) {
            if (set) return;
            ports_.log.write(LogLevel::error, "app",
                             "the name did not reach the service: " + std::string{set.error().text()});
        });
    }
    announcer_.changed(AppChange::people);
}

void People::learnPartnerName(const std::string& name) {
    state_.partnerDisplayName = name;
    if (name.empty()) {
        ports_.defaults.remove("partnerDisplayName");
    } else {
        ports_.defaults.setString("partnerDisplayName", name);
    }
    rename(partner(), name);
    announcer_.changed(AppChange::people);
}

void People::rename(PartnerID slot, const std::string& name) {
    if (name.empty()) {
        state_.partnerNames.erase(slot);
    } else {
        state_.partnerNames[slot] = name;
    }
}

void People::meet(PartnerSet paired, const std::optional<SlotNames>& names) {
    const Announcer::Update update{announcer_};
    if (state_.paired != paired) announcer_.changed(AppChange::people);
    state_.paired = paired;
    for (const auto person : {PartnerID::a, PartnerID::b}) {
        const auto named = names ? names->of(person) : std::nullopt;
        const auto known = state_.partnerNames.find(person);
        if (!named || (known != state_.partnerNames.end() && known->second == *named)) continue;
        rename(person, *named);
        announcer_.changed(AppChange::people);
    }
    if (!paired.contains(partner())) {
        if (!state_.partnerDisplayName.empty()) learnPartnerName("");
    } else if (names && names->of(partner()) && *names->of(partner()) != state_.partnerDisplayName) {
        learnPartnerName(*names->of(partner()));
    }
}

void People::releasePartner(std::function<void()> then) {
    if (!token_) return;
    releaseCall_ = service_.client().releasePartner(
        *token_, [this, then = std::move(then)](std::expected<void, PairingFailure> released) {
            const Announcer::Update update{announcer_};
            if (!released) return announcer_.say(std::string{released.error().text()});
            learnPartnerName("");
            then();
        });
}

void People::refreshFaces() {
    const auto picture = ports_.contacts.ownCard().picturePath;
    if (state_.myPicturePath == picture) return;
    state_.myPicturePath = picture;
    announcer_.changed(AppChange::people);
}

} // namespace lumaro
