// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/App/ThreadedRoomLinks.h"
#include "Lumaro/Model/AppModel.h"
#include "Platform/Linux/AutostartEntry.h"
#include "Platform/Linux/DesktopNotifications.h"
#include "Platform/Linux/DesktopSound.h"
#include "Platform/Linux/LoginSignals.h"
#include "Platform/Linux/SecretServiceStore.h"
#include "Platform/Linux/UserContactCard.h"
#include "Platform/Posix/FileSecretStore.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Platform/Posix/StderrLog.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/SystemRandom.h"
#include "Platform/Qt/QtBackgroundRunner.h"
#include "Platform/Qt/QtHttpClient.h"
#include "Platform/Qt/QtSleeper.h"
#include "Platform/Qt/SettingsFile.h"

#include <string>

namespace lumaro {

/// Everything that the model is built on, in the order in which it depends on each other.
struct Desktop {
    /// The profile's folder is there. `program` is this one's path.
    Desktop(const std::string& profile, bool isDefault, const std::string& program, bool isVerbose);

    AppModel::Ports ports(WallpaperController& wallpaper);

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
    QtBackgroundRunner pictureBackground; ///< decoding and cutting take long, and hold up no snapshot
    ThreadedRoomLinks rooms;
    SettingsFile defaults;
    DesktopNotifications notifications;
    AutostartEntry loginItem;
    UserContactCard contacts;
    DesktopSound sounds;
    LoginSignals signals;
};

} // namespace lumaro
