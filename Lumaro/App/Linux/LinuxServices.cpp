// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/SystemServices.h"
#include "Platform/Linux/AutostartEntry.h"
#include "Platform/Linux/AvahiRooms.h"
#include "Platform/Linux/DesktopNotifications.h"
#include "Platform/Linux/DesktopSound.h"
#include "Platform/Linux/DownloadAttributes.h"
#include "Platform/Linux/GraphicsProcessor.h"
#include "Platform/Linux/LoginSignals.h"
#include "Platform/Linux/MprisPlayers.h"
#include "Platform/Linux/PictureMemory.h"
#include "Platform/Linux/ScreenLock.h"
#include "Platform/Linux/SecretServiceStore.h"
#include "Platform/Linux/SystemPosition.h"
#include "Platform/Linux/UrlScheme.h"
#include "Platform/Linux/UserContactCard.h"
#include "Platform/Linux/UserRoom.h"

#include <QtCore/QByteArray>
#include <QtCore/QCryptographicHash>

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace lumaro {
namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing of ours changes it
    return value == nullptr ? "" : value;
}

AutostartEntry::Program startedAtLogin(const SystemServices::Setup& setup) {
    return {.id = setup.isDefaultProfile ? "lumaro"
                                         : "lumaro-" + std::filesystem::path{setup.profile}.filename().string(),
            .name = "Lumaro",
            .command = {setup.program, "--profile", setup.profile, "--hidden"}};
}

// Profiles have a room each.
UserRoom::Setup keptRoom(const SystemServices::Setup& setup) {
    // Of folders of one name in different places, too.
    const auto path = QByteArray::fromStdString(setup.profile);
    const auto mark = QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().left(12).toStdString();
    return {.program = UserRoom::programBeside(setup.program),
            .database = setup.profile + "/room/room.db",
            .unitName = setup.isDefaultProfile ? "lumaro-room.service" : "lumaro-room-" + mark + ".service",
            .unitFolder = UserRoom::userUnitFolder()};
}

class LinuxServices final : public SystemServices {
public:
    LinuxServices(const Setup& setup, FileSystem& files)
        : loginItem_(files, AutostartEntry::userFolder(), startedAtLogin(setup)),
          contacts_(UserContactCard::ownAccount()), sounds_(DesktopSound::userFolders()),
          origin_({.program = setup.program, .folder = DownloadAttributes::userFolder()}),
          homeRoom_(files, keptRoom(setup)), links_(files, UrlScheme::userFolders(), {setup.program}) {}

    Keyring& keyring() override { return keyring_; }
    NotificationCenter& notifications() override { return notifications_; }
    LoginItem& loginItem() override { return loginItem_; }
    ContactCard& contacts() override { return contacts_; }
    SoundPlayer& sounds() override { return sounds_; }
    SystemSignals& signals() override { return signals_; }
    DownloadOrigin& downloadOrigin() override { return origin_; }
    MusicPlayers players() override { return {players_, players_, players_, players_}; }
    PositionSource& positions() override { return positions_; }
    HomeRoom& homeRoom() override { return homeRoom_; }
    RoomsNearby& roomsNearby() override { return nearby_; }
    std::expected<void, std::string> claimLinks() override { return links_.claim(); }
    Listening onScreenLock(std::function<void(bool isLocked)> changed) override {
        return std::make_shared<ScreenLock>(std::move(changed));
    }

private:
    SecretServiceStore keyring_;
    DesktopNotifications notifications_;
    AutostartEntry loginItem_;
    UserContactCard contacts_;
    DesktopSound sounds_;
    LoginSignals signals_;
    DownloadAttributes origin_;
    MprisPlayers players_;
    SystemPosition positions_;
    UserRoom homeRoom_;
    AvahiRooms nearby_;
    UrlScheme links_;
};

} // namespace

void SystemServices::prepareProcess() {
    giveBackPictureMemory();
}

std::string SystemServices::defaultProfile() {
    const auto data = environment("XDG_DATA_HOME");
    return (data.starts_with('/') ? data : environment("HOME") + "/.local/share") + "/lumaro-desktop";
}

bool SystemServices::hasGraphicsProcessor() {
    return lumaro::hasGraphicsProcessor();
}

std::unique_ptr<SystemServices> SystemServices::make(const Setup& setup, FileSystem& files) {
    return std::make_unique<LinuxServices>(setup, files);
}

} // namespace lumaro
