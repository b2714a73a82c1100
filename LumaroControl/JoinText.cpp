// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/JoinText.h"

#include "LumaroCore/Pairing/InviteLink.h"

namespace lumaro {

std::optional<std::string_view> faultOfCodeOrLink(std::string_view text) {
    if (inviteIdIn(text) || normalizeCode(text).size() == joinCodeLength) return std::nullopt;
    return "a code is six digits.";
}

} // namespace lumaro
