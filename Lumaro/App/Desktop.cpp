// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/Desktop.h"

#include "Data/Places/PlacesData.h"
#include "Lumaro/App/QtRoomLinks.h"
#include "LumaroCore/Support/Fatal.h"

namespace lumaro {
namespace {

PlaceTable ownTable() {
    auto table = PlaceTable::open(placesData());
    if (!table) fatal("the table of places: " + table.error());
    return *table;
}

} // namespace

Desktop::Desktop(const SystemServices::Setup& setup, LogLevel level)
    : log(level), system(SystemServices::make(setup, files)), secretFile(files, setup.profile + "/secrets"),
      places(ownTable()),
      rooms([folder = setup.profile + "/outbox", this] { return std::make_unique<QtRoomLinks>(folder, log); }),
      defaults(setup.profile + "/settings.ini", log) {
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
            .keyring = system->keyring(),
            .secretFile = secretFile,
            .defaults = defaults,
            .notifications = system->notifications(),
            .loginItem = system->loginItem(),
            .contacts = system->contacts(),
            .sounds = system->sounds(),
            .signals = system->signals(),
            .origin = system->downloadOrigin(),
            .players = system->players(),
            .coverMaker = coverMaker,
            .cityPainter = cityPainter,
            .cityMaker = cityMaker,
            .positions = system->positions(),
            .geocoder = geocoder,
            .zone = zone,
            .homeRoom = system->homeRoom(),
            .nearby = system->roomsNearby(),
            .wallpaper = wallpaper};
}

} // namespace lumaro
