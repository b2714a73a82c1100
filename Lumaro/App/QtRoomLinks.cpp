// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/QtRoomLinks.h"

#include <utility>

namespace lumaro {

QtRoomLinks::QtRoomLinks(std::string outboxFolder, Log& log)
    : links_(std::move(outboxFolder),
             {.files = files_,
              .ids = ids_,
              .client = {.transport = transport_, .http = http_, .sleeper = sleeper_, .clock = clock_, .log = log}}) {
}

std::expected<std::unique_ptr<RoomLink>, std::string> QtRoomLinks::open(Address address, RoomLink::Listener& listener) {
    return links_.open(std::move(address), listener);
}

} // namespace lumaro
