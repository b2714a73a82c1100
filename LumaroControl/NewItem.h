// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"

namespace lumaro {

/// What a new item holds; travels as its kind and its payload.
struct NewItem {
    Payload payload;

    bool operator==(const NewItem&) const = default;
};

} // namespace lumaro
