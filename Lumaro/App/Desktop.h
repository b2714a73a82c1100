// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/App/SystemServices.h"
#include "Lumaro/App/ThreadedRoomLinks.h"
#include "Lumaro/Model/AppModel.h"
#include "Lumaro/Model/Computer/BoardWallpaper.h"
#include "Lumaro/Pictures/QtCityPictureMaker.h"
#include "Lumaro/Pictures/QtCoverMaker.h"
#include "LumaroCore/Places/PlaceTable.h"
#include "LumaroCore/Places/TableGeocoder.h"
#include "Platform/Posix/FileSecretStore.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Platform/Posix/StderrLog.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/SystemRandom.h"
#include "Platform/Qt/QtBackgroundRunner.h"
#include "Platform/Qt/QtCityPainter.h"
#include "Platform/Qt/QtHttpClient.h"
#include "Platform/Qt/QtSleeper.h"
#include "Platform/Qt/QtSystemZone.h"
#include "Platform/Qt/SettingsFile.h"

#include <memory>

namespace lumaro {

/// Everything that the model is built on, in the order in which it depends on each other.
struct Desktop {
    /// The profile's folder is there.
    Desktop(const SystemServices::Setup& setup, LogLevel level);

    AppModel::Ports ports(WallpaperController& wallpaper);
    BoardWallpaper::Ports wallpaperPorts(BoardPainter& painter);

    StderrLog log;
    PosixFileSystem files;
    std::unique_ptr<SystemServices> system;
    SystemRandom ids;
    SystemClock clock;
    QtSleeper sleeper;
    QtHttpClient http;
    FileSecretStore secretFile;
    QtBackgroundRunner background;
    QtBackgroundRunner secretBackground;
    QtBackgroundRunner pictureBackground; ///< decoding and cutting take long, and hold up no snapshot
    QtCoverMaker coverMaker;
    QtCityPainter cityPainter{QtCityPainter::usualFolders()};
    QtCityPictureMaker cityMaker;
    PlaceTable places;
    TableGeocoder geocoder{places};
    QtSystemZone zone;
    ThreadedRoomLinks rooms;
    SettingsFile defaults;
};

} // namespace lumaro
