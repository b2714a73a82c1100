// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"

namespace lumaro {

/// What a pairing keeps while it waits for the service, the keychain or the person.
struct AppModel::PairingUnderWay {
    std::optional<CoupleToken> token; ///< once there is one
    Paired then;

    // Of a join.
    JoinDoor door = JoinDoor::code;
    std::string key; ///< the code's digits, or the invite's id
    std::optional<PartnerID> slot;
    bool isQuiet = false; ///< of a hand-off: nobody has asked for it
};

} // namespace lumaro
