// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/Announcer.h"
#include "Lumaro/Model/Presence/Consent.h"
#include "Lumaro/Model/Presence/PresenceSender.h"
#include "LumaroCore/Services/SystemZone.h"
#include "LumaroCore/Services/UserDefaults.h"

#include <string>

namespace lumaro {

struct HoursState {
    Consent hoursConsent = Consent::notAsked;
};

/// Shares this computer's time zone alone, without a place, if the person said so. Keeps what they said.
class HoursSharing {
public:
    /// All outlive this.
    struct Ports {
        SystemZone& zone;
        UserDefaults& defaults;
    };
    HoursSharing(Ports ports, HoursState& state, PresenceSender& presence, Announcer& announcer);
    HoursSharing(const HoursSharing&) = delete;
    HoursSharing& operator=(const HoursSharing&) = delete;
    ~HoursSharing() = default;

    void share(bool shares);
    /// What is, or would be, shared; empty where this computer's zone has no name.
    std::string zone() { return ports_.zone.identifier(); }
    /// The computer may be somewhere else.
    void lookAgain() { follow(); }

private:
    void follow();

    Ports ports_;
    HoursState& state_;
    PresenceSender& presence_;
    Announcer& announcer_;
};

} // namespace lumaro
