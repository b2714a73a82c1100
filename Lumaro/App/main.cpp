// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/AppControl.h"
#include "Lumaro/App/Desktop.h"
#include "Lumaro/App/HandOver.h"
#include "Lumaro/Windows/Windows.h"
#include "LumaroControl/ProfileSocket.h"
#include "LumaroCore/Protocol/ServerAddress.h"
#include "Platform/Posix/FolderLock.h"
#include "Platform/Qt/QtLoop.h"

#include <CLI/CLI.hpp>
#include <QtCore/QLocale>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace lumaro {
namespace {

struct Arguments {
    bool isHeadless = false;
    bool isHidden = false;
    bool isQuickNote = false;
    bool isVerbose = false;
    std::string profile;
    std::string server;
    std::string link;
    std::string forecasts;
};

/// There is no window to hang.
class NoWallpaper final : public WallpaperController {
public:
    void setEnabled(bool) override {}
};

int fail(const std::string& why) {
    std::cerr << "lumaro: " << why << '\n';
    return EXIT_FAILURE;
}

std::optional<std::string> linkOf(const Arguments& arguments) {
    return arguments.link.empty() ? std::nullopt : std::optional{arguments.link};
}

/// The model with its socket for commands, until it is told to end.
int serve(AppModel& app, Desktop& desktop, QtLoop& loop, const std::string& profile, const Arguments& arguments,
          std::unique_ptr<Windows> windows) {
    std::function<void()> openBoard;
    if (windows) openBoard = [&windows] { windows->openBoard(); };
    const auto control =
        AppControl::listen(profile + "/" + std::string{ProfileSocket::ofApplication}, app, desktop.places, openBoard);
    if (!control) return fail("no socket for commands: " + control.error());
    app.onNews([&](const AppNews& news) {
        if (windows) windows->hear(news);
        (*control)->answerReady();
    });
    loop.onTermination([&] { loop.quit(); });
    // The board under one's hands is drawn before the desktop's, which takes longer.
    const bool isInTheBackground = arguments.isHidden || arguments.isQuickNote;
    if (windows && !(isInTheBackground && app.state().showsBoardOnDesktop)) windows->openBoard();
    app.start();
    if (arguments.isQuickNote) app.requestQuickNote(std::nullopt);
    if (const auto link = linkOf(arguments)) app.pairing().joinByLink(*link);
    loop.run();
    app.onNews(nullptr);
    windows.reset();
    app.shutdown();
    desktop.system->keyring().stop();
    return EXIT_SUCCESS;
}

AppModel::Setup setupOf(const std::string& profile, bool isDefault) {
    AppModel::Setup setup{.profile = profile, .version = LUMARO_VERSION, .defaultServerURL = LUMARO_DEFAULT_SERVER};
    // "de_CH": of the language and of the country.
    const auto country = QLocale::system().name().section(QLatin1Char{'_'}, 1, 1);
    if (country.size() == 2) setup.artwork.country = country.toStdString();
    // Two people on one computer share a keyring, not a token.
    if (!isDefault) setup.keychainService += ":" + profile;
    return setup;
}

int runHeadless(Desktop& desktop, QtLoop& loop, const std::string& profile, const Arguments& arguments) {
    NoWallpaper wallpaper;
    auto setup = setupOf(profile, arguments.profile.empty());
    // What is opened at login has windows.
    setup.offersLaunchAtLogin = false;
    AppModel app{std::move(setup), desktop.ports(wallpaper)};
    return serve(app, desktop, loop, profile, arguments, nullptr);
}

int runWindows(Desktop& desktop, QtLoop& loop, const std::string& profile, const Arguments& arguments) {
    prepareWindows();
    // Where the processor draws, Qt's own painting takes a small part of what OpenGL's would. People may choose either.
    const bool isUpToUs =
        qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND") && qEnvironmentVariableIsEmpty("QSG_RHI_BACKEND");
    if (isUpToUs && !SystemServices::hasGraphicsProcessor()) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
    Windows* windows = nullptr;
    DesktopBoards boards{desktop.defaults, [&](QScreen&) { return windows->makeDesktopWindow(); }};
    const auto lock = desktop.system->onScreenLock([&](bool isLocked) { boards.setScreenLocked(isLocked); });
    AppModel app{setupOf(profile, arguments.profile.empty()), desktop.ports(boards)};
    auto made = std::make_unique<Windows>(
        AppView::Setup{.folder = QString::fromStdString(profile),
                       .version = QStringLiteral(LUMARO_VERSION),
                       .suggestedName = QString::fromStdString(desktop.system->contacts().ownCard().fullName)},
        Windows::Ports{app, boards, desktop.clock, desktop.sleeper, desktop.ids, desktop.pictureBackground,
                       desktop.defaults, desktop.system->loginItem(), desktop.places},
        [&] { loop.quit(); });
    windows = made.get();
    return serve(app, desktop, loop, profile, arguments, std::move(made));
}

void claimLinks(Desktop& desktop) {
    if (const auto claimed = desktop.system->claimLinks(); !claimed) {
        desktop.log.write(LogLevel::error, "app", "links will not open here: " + claimed.error());
    }
}

int run(const Arguments& arguments) {
    const bool isDefault = arguments.profile.empty();
    const auto folder = isDefault ? SystemServices::defaultProfile() : arguments.profile;
    const auto profile = std::filesystem::absolute(folder).string();
    const auto server = ServerAddress::parse(arguments.server);
    if (!arguments.server.empty() && !server) return fail("--server: " + std::string{textOf(server.error())});
    QtLoop loop;
    if (const auto made = PosixFileSystem{}.createDirectories(profile); !made) {
        return fail("the profile's folder cannot be made: " + made.error().message);
    }
    const auto lock = FolderLock::take(profile + "/app.lock");
    if (!lock) {
        if (arguments.isQuickNote && handOverQuickNote(profile)) return EXIT_SUCCESS;
        if (!arguments.isHeadless && handOver(profile, linkOf(arguments))) return EXIT_SUCCESS;
        return fail("another one has this profile");
    }
    // Where the program lies, by whatever name it was called.
    const auto program = QCoreApplication::applicationFilePath().toStdString();
    Desktop desktop{{.profile = profile, .isDefaultProfile = isDefault, .program = program},
                    arguments.isVerbose ? LogLevel::debug : LogLevel::info};
    if (server) desktop.defaults.setString("serverURL", server->url());
    if (!arguments.forecasts.empty()) desktop.defaults.setString(forecastsKey, arguments.forecasts);
    if (arguments.isHeadless) return runHeadless(desktop, loop, profile, arguments);
    if (isDefault) claimLinks(desktop);
    return runWindows(desktop, loop, profile, arguments);
}

} // namespace
} // namespace lumaro

int main(int argc, char** argv) {
    lumaro::Arguments arguments;
    CLI::App app{"One board for two people, behind the icons of both their desktops.", "lumaro"};
    app.set_version_flag("--version", LUMARO_VERSION);
    app.add_flag("--headless", arguments.isHeadless, "run the session without a window");
    app.add_flag("--hidden", arguments.isHidden, "hang on the desktop, and open no window");
    app.add_flag("--quick-note", arguments.isQuickNote, "open the composer of a quick note")->excludes("--headless");
    app.add_flag("--verbose", arguments.isVerbose, "log everything");
    app.add_option("--profile", arguments.profile, "the folder of this person's files")->type_name("DIR");
    app.add_option("--server", arguments.server, "the board's server, from now on")->type_name("URL");
    app.add_option("--forecasts", arguments.forecasts,
                   "the forecast service (Open-Meteo's API) where the board's server has no weather, from now on")
        ->type_name("URL");
    app.add_option("LINK", arguments.link, "an invite to join through")->type_name("");
    CLI11_PARSE(app, argc, argv);
    lumaro::SystemServices::prepareProcess();
    std::optional<QApplication> windows;
    if (!arguments.isHeadless) {
        windows.emplace(argc, argv);
        // The tray and the desktop stay when the board's window is closed.
        QApplication::setQuitOnLastWindowClosed(false);
    }
    return lumaro::run(arguments);
}
