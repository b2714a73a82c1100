// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Data/Places/PlacesData.h"
#include "Lumaro/Offline/DemoRoom.h"
#include "Lumaro/Offline/QuietServices.h"
#include "Lumaro/Pictures/QtCoverMaker.h"
#include "Lumaro/Windows/Windows.h"
#include "LumaroCore/Places/TableGeocoder.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Platform/Posix/StderrLog.h"
#include "Platform/Posix/SystemRandom.h"
#include "Platform/Qt/QtBackgroundRunner.h"
#include "Platform/Qt/QtSleeper.h"
#include "Platform/Qt/QtSystemZone.h"
#include "Platform/Qt/SettingsFile.h"

#include <QtCore/QTemporaryDir>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// What a demonstration can show.
enum class Scene : std::uint8_t {
    together, ///< the partner is here
    alone,
    offline,
    storm, ///< over the partner's roofs, and it is night
    quiet, ///< nothing is known of the partner, and nothing is shared
    paused,
    noCover,
    longNames,
    nextSong, ///< another one begins
    arrival,
    thread, ///< being tied
    rung,
    full,
    empty,
    neverAsked, ///< from here on one's own window hangs there: whether the partner may see where one is
    denied,
    restricted,
    waiting,
    byHand,
    named,
    oldWeather, ///< over the partner's roofs
    refused,
    locked, ///< from here on the board is not there yet
    welcome,
    bringThemOver,
};

constexpr std::array<std::string_view, 25> namesOf(Scene) {
    return {"together",   "alone",    "offline",    "storm",        "quiet",  "paused", "noCover",
            "longNames",  "nextSong", "arrival",    "thread",       "rung",   "full",   "empty",
            "neverAsked", "denied",   "restricted", "waiting",      "byHand", "named",  "oldWeather",
            "refused",    "locked",   "welcome",    "bringThemOver"};
}

/// The real application over a computer that is not there, playing one scene. Its files lie in a folder that goes with
/// it.
class Rehearsal {
public:
    struct Setup {
        Scene scene = Scene::together;
        std::optional<Sky> sky;  ///< over the partner's roofs; what the scene has there otherwise
        std::optional<int> hour; ///< that the partner's clock strikes, 0 to 23; this moment otherwise
    };

    explicit Rehearsal(Setup setup);
    Rehearsal(const Rehearsal&) = delete;
    Rehearsal& operator=(const Rehearsal&) = delete;
    ~Rehearsal();

    /// Opens the window; from then on the scene plays.
    void open();
    Windows& windows() { return *windows_; }
    AppModel& app() { return app_; }
    DesktopBoards& desktop() { return desktop_; }

private:
    AppModel::Ports ports();
    void settle();
    void settlePlace();
    void setHour(int hour);
    void storePictures(const DemoBoard& demo);
    void play();
    void playNextSong();

    Setup setup_;
    QTemporaryDir folder_;
    std::string profile_;
    StderrLog log_{LogLevel::error};
    PosixFileSystem files_;
    SystemRandom ids_;
    StagedClock clock_;
    QtSleeper sleeper_;
    QuietHttp http_{sleeper_};
    QtBackgroundRunner background_;
    QtBackgroundRunner secretBackground_;
    QuietSecrets<Keyring> keyring_;
    QuietSecrets<SecretStore> secretFile_;
    DemoRoom room_{sleeper_};
    SettingsFile defaults_;
    QuietNotifications notifications_;
    QuietLoginItem loginItem_;
    QuietContacts contacts_;
    QuietSounds sounds_;
    QuietSignals signals_;
    QuietOrigin origin_;
    QuietPlayers players_;
    QuietPositions positions_{sleeper_};
    PlaceTable towns_;
    TableGeocoder geocoder_{towns_};
    QtSystemZone zone_;
    QtCoverMaker coverMaker_;
    QuietCity city_;
    QuietHomeRoom homeRoom_;
    QuietNearby nearby_;
    DesktopBoards desktop_;
    AppModel app_;
    std::unique_ptr<Windows> windows_;
    std::unique_ptr<Sleeper::Wait> cue_;
};

} // namespace lumaro
