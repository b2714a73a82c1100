// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/Announcer.h"
#include "Lumaro/Model/Presence/Consent.h"
#include "Lumaro/Model/Presence/PresenceSender.h"
#include "LumaroCore/Music/MusicWatcher.h"
#include "LumaroCore/Services/UserDefaults.h"

#include <optional>

namespace lumaro {

struct MusicState {
    Consent musicConsent = Consent::notAsked;
    bool includesBrowsers = false; ///< what plays in a browser counts too
    bool looksForCovers = false;   ///< on the web, where the player shows none
};

/// Shares what plays on this computer, if the person said so. Keeps what they said.
class MusicSharing {
public:
    /// All outlive this.
    struct Ports {
        MusicWatcher::Ports watcher;
        UserDefaults& defaults;
    };

    MusicSharing(Ports ports, MusicState& state, PresenceSender& presence, Announcer& announcer);
    MusicSharing(const MusicSharing&) = delete;
    MusicSharing& operator=(const MusicSharing&) = delete;
    ~MusicSharing() = default;

    /// Listens from now on where it is shared.
    void start();
    void stop();

    void share(bool shares);
    void includeBrowsers(bool includes);
    void lookForCovers(bool looks);
    /// Covers are looked for anew: those found lie in the room of another board, or none could be left in this one's.
    void forgetCovers();

private:
    void follow();
    void hear(const std::optional<NowPlaying>& playing);

    Ports ports_;
    MusicState& state_;
    PresenceSender& presence_;
    Announcer& announcer_;
    MusicWatcher watcher_;
};

} // namespace lumaro
