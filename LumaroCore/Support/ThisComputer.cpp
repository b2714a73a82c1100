// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/ThisComputer.h"

namespace lumaro {

std::string onAnyComputer(std::string_view text) {
    std::string read{text};
    for (auto at = read.find(textsComputer); at != std::string::npos; at = read.find(textsComputer, at)) {
        read.replace(at, textsComputer.size(), anyComputer);
        at += anyComputer.size();
    }
    return read;
}

} // namespace lumaro
