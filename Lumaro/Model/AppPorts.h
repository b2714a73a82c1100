// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Computer/DesktopSwitch.h"
#include "Lumaro/Model/Membership/Membership.h"
#include "Lumaro/Model/Room/RoomLink.h"
#include "LumaroCore/CityWindow/CityPainter.h"
#include "LumaroCore/CityWindow/CityPictureMaker.h"
#include "LumaroCore/Location/PositionSource.h"
#include "LumaroCore/Location/ReverseGeocoder.h"
#include "LumaroCore/Music/CoverMaker.h"
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
#include "LumaroCore/Services/SystemZone.h"
#include "LumaroCore/Services/UserDefaults.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/UUIDSource.h"
#include "LumaroCore/Support/WallClock.h"

namespace lumaro {

/// What the application is built on. All outlive the model.
struct AppPorts {
    Sleeper& sleeper;
    WallClock& clock;
    Log& log;
    UUIDSource& ids;
    FileSystem& files;
    HttpClient& http;
    BackgroundRunner& background;
    BackgroundRunner& secretBackground; ///< a keyring may wait there for the person
    RoomLinks& rooms;
    Keyring& keyring;
    SecretStore& secretFile; ///< for people without a keyring who agreed to it
    UserDefaults& defaults;
    NotificationCenter& notifications;
    LoginItem& loginItem;
    ContactCard& contacts;
    SoundPlayer& sounds;
    SystemSignals& signals;
    DownloadOrigin& origin;
    MusicPlayers players;
    CoverMaker& coverMaker;
    CityPainter& cityPainter;
    CityPictureMaker& cityMaker;
    PositionSource& positions;
    ReverseGeocoder& geocoder;
    SystemZone& zone;
    HomeRoom& homeRoom;
    RoomsNearby& nearby;
    WallpaperController& wallpaper;
};

} // namespace lumaro
