// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/AppControl.h"
#include "Lumaro/App/ThreadedRoomLinks.h"
#include "Platform/Linux/AutostartEntry.h"
#include "Platform/Linux/DesktopNotifications.h"
#include "Platform/Linux/DesktopSound.h"
#include "Platform/Linux/LoginSignals.h"
#include "Platform/Linux/SecretServiceStore.h"
#include "Platform/Linux/UserContactCard.h"
#include "Platform/Posix/FileSecretStore.h"
#include "Platform/Posix/FolderLock.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Platform/Posix/StderrLog.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/SystemRandom.h"
#include "Platform/Qt/QtBackgroundRunner.h"
#include "Platform/Qt/QtHttpClient.h"
#include "Platform/Qt/QtLoop.h"
#include "Platform/Qt/QtSleeper.h"
#include "Platform/Qt/SettingsFile.h"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

namespace lumaro {
namespace {

struct Arguments {
    bool isHeadless = false;
    bool isVerbose = false;
    std::string profile;
    std::string server;
};

std::string environment(const char* name) {
    const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing of ours changes it
    return value == nullptr ? "" : value;
}

std::string defaultProfile() {
    const auto data = environment("XDG_DATA_HOME");
    return (data.starts_with('/') ? data : environment("HOME") + "/.local/share") + "/lumaro-desktop";
}

/// There is no window to hang.
class NoWallpaper final : public WallpaperController {
public:
    void setEnabled(bool) override {}
    void refresh() override {}
};

int fail(const std::string& why) {
    std::cerr << "lumaro: " << why << '\n';
    return EXIT_FAILURE;
}

/// Everything that the model is built on, in the order in which it depends on each other.
struct Desktop {
    Desktop(const std::string& profile, bool isDefault, const std::string& program, bool isVerbose)
        : log(isVerbose ? LogLevel::debug : LogLevel::info), secretFile(files, profile + "/secrets"),
          rooms(profile + "/outbox", log), defaults(profile + "/settings.ini", log),
          loginItem(files, AutostartEntry::userFolder(),
                    {isDefault ? "lumaro" : "lumaro-" + std::filesystem::path{profile}.filename().string(),
                     "Lumaro",
                     {program, "--profile", profile}}),
          contacts(UserContactCard::ownAccount()), sounds(DesktopSound::userFolders()) {}

    AppModel::Ports ports() {
        return {sleeper,          clock,  log,     ids,        files,    http,          background,
                secretBackground, rooms,  keyring, secretFile, defaults, notifications, loginItem,
                contacts,         sounds, signals, wallpaper};
    }

    StderrLog log;
    PosixFileSystem files;
    SystemRandom ids;
    SystemClock clock;
    QtSleeper sleeper;
    QtHttpClient http;
    SecretServiceStore keyring;
    FileSecretStore secretFile;
    QtBackgroundRunner background;
    QtBackgroundRunner secretBackground;
    ThreadedRoomLinks rooms;
    SettingsFile defaults;
    DesktopNotifications notifications;
    AutostartEntry loginItem;
    UserContactCard contacts;
    DesktopSound sounds;
    LoginSignals signals;
    NoWallpaper wallpaper;
};

int run(const Arguments& arguments, const std::string& program) {
    const bool isDefault = arguments.profile.empty();
    const auto profile = std::filesystem::absolute(isDefault ? defaultProfile() : arguments.profile).string();
    QtLoop loop;
    if (const auto made = PosixFileSystem{}.createDirectories(profile); !made) {
        return fail("the profile's folder cannot be made: " + made.error().message);
    }
    const auto lock = FolderLock::take(profile + "/app.lock");
    if (!lock) return fail("another one has this profile");
    Desktop desktop{profile, isDefault, program, arguments.isVerbose};
    if (!arguments.server.empty()) desktop.defaults.setString("serverURL", arguments.server);
    AppModel::Setup setup{.profile = profile, .version = LUMARO_VERSION};
    // Two people on one computer share a keyring, not a token.
    if (!isDefault) setup.keychainService += ":" + profile;
    AppModel app{std::move(setup), desktop.ports()};
    const auto control = AppControl::listen(profile + "/" + std::string{ProfileSocket::ofApplication}, app);
    if (!control) return fail("no socket for commands: " + control.error());
    loop.onTermination([&] { loop.quit(); });
    app.start();
    loop.run();
    app.shutdown();
    desktop.keyring.stop();
    return EXIT_SUCCESS;
}

} // namespace
} // namespace lumaro

int main(int argc, char** argv) {
    lumaro::Arguments arguments;
    CLI::App app{"One board for two people, behind the icons of both their desktops.", "lumaro"};
    app.set_version_flag("--version", LUMARO_VERSION);
    app.add_flag("--headless", arguments.isHeadless, "run the session without a window")->required();
    app.add_flag("--verbose", arguments.isVerbose, "log everything");
    app.add_option("--profile", arguments.profile, "the folder of this person's files")->type_name("DIR");
    app.add_option("--server", arguments.server, "the board's server, from now on")->type_name("URL");
    CLI11_PARSE(app, argc, argv);
    return lumaro::run(arguments, std::filesystem::absolute(argv[0]).string());
}
