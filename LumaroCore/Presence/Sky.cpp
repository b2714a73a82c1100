// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Sky.h"

namespace lumaro {

Sky skyOf(std::int64_t code, bool isDay) {
    switch (code) {
    case 71:
    case 73:
    case 75:
    case 77:
    case 85:
    case 86: return Sky::snow;
    case 95:
    case 96:
    case 99: return Sky::storm;
    case 0:
    case 1: return isDay ? Sky::clear : Sky::night;
    case 2:
    case 3: return Sky::cloud;
    case 45:
    case 48: return Sky::fog;
    default: return Sky::rain;
    }
}

} // namespace lumaro
