// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/Desktop.h"

#include <filesystem>

namespace lumaro {

Desktop::Desktop(const std::string& profile, bool isDefault, const std::string& program, bool isVerbose)
    : log(isVerbose ? LogLevel::debug : LogLevel::info), secretFile(files, profile + "/secrets"),
      rooms(profile + "/outbox", log), defaults(profile + "/settings.ini", log),
      loginItem(files, AutostartEntry::userFolder(),
                {isDefault ? "lumaro" : "lumaro-" + std::filesystem::path{profile}.filename().string(),
                 "Lumaro",
                 {program, "--profile", profile, "--hidden"}}),
      contacts(UserContactCard::ownAccount()), sounds(DesktopSound::userFolders()) {
}

AppModel::Ports Desktop::ports(WallpaperController& wallpaper) {
    return {.sleeper = sleeper,
            .clock = clock,
            .log = log,
            .ids = ids,
            .files = files,
            .http = http,
            .background = background,
            .secretBackground = secretBackground,
            .rooms = rooms,
            .keyring = keyring,
            .secretFile = secretFile,
            .defaults = defaults,
            .notifications = notifications,
            .loginItem = loginItem,
            .contacts = contacts,
            .sounds = sounds,
            .signals = signals,
            .wallpaper = wallpaper};
}

} // namespace lumaro
