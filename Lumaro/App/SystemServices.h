// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/PositionSource.h"
#include "LumaroCore/Music/MusicPlayers.h"
#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Services/ContactCard.h"
#include "LumaroCore/Services/DownloadOrigin.h"
#include "LumaroCore/Services/HomeRoom.h"
#include "LumaroCore/Services/LoginItem.h"
#include "LumaroCore/Services/NotificationCenter.h"
#include "LumaroCore/Services/RoomsNearby.h"
#include "LumaroCore/Services/SecretStore.h"
#include "LumaroCore/Services/SoundPlayer.h"
#include "LumaroCore/Services/SystemSignals.h"

#include <expected>
#include <functional>
#include <memory>
#include <string>

namespace lumaro {

/// What the system under this program offers. Each system has a folder of its name beside this file, which defines the
/// static functions; no other place names what only that system has. Used on the main thread, but for the ports that
/// say otherwise.
class SystemServices {
public:
    struct Setup {
        std::string profile; ///< the folder of this person's files
        bool isDefaultProfile = true;
        std::string program; ///< this one's path
    };

    /// Once, before anything else: the process behaves as the system likes it.
    static void prepareProcess();
    /// The folder of a person's files when they name none.
    static std::string defaultProfile();
    /// Whether this computer has something to draw with beside its processor.
    static bool hasGraphicsProcessor();
    /// There is a Qt application by then. The file system outlives the services.
    static std::unique_ptr<SystemServices> make(const Setup& setup, FileSystem& files);

    SystemServices() = default;
    SystemServices(const SystemServices&) = delete;
    SystemServices& operator=(const SystemServices&) = delete;
    virtual ~SystemServices() = default;

    virtual Keyring& keyring() = 0;
    virtual NotificationCenter& notifications() = 0;
    virtual LoginItem& loginItem() = 0;
    virtual ContactCard& contacts() = 0;
    virtual SoundPlayer& sounds() = 0;
    virtual SystemSignals& signals() = 0;
    virtual DownloadOrigin& downloadOrigin() = 0;
    virtual MusicPlayers players() = 0;
    virtual PositionSource& positions() = 0;
    virtual HomeRoom& homeRoom() = 0;
    virtual RoomsNearby& roomsNearby() = 0;

    /// Makes this program the one that opens the person's "lumaro:" links. The error is for the log.
    [[nodiscard]] virtual std::expected<void, std::string> claimLinks() = 0;

    /// Dropping it ends the listening.
    using Listening = std::shared_ptr<void>;
    /// `changed` is told from the event loop when the screen is locked or goes blank, and when it is back.
    [[nodiscard]] virtual Listening onScreenLock(std::function<void(bool isLocked)> changed) = 0;
};

} // namespace lumaro
