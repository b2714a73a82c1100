// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroCore/Protocol/LumaroCoreError.h"
#include "LumaroCore/Support/Hash.h"

#include <expected>
#include <iosfwd>
#include <string>
#include <string_view>

namespace lumaro {

/// A device's credential for its couple's room: `lm1.<couple id>.<a or b>.<secret>`. A secret: only the redacted form
/// is ever shown.
struct CoupleToken {
    static constexpr std::string_view prefix = "lm1";

    std::string raw;
    std::string coupleId;
    PartnerID slot = PartnerID::a;
    std::string secret;

    /// Reads a token, white space around it apart; `InvalidToken` for anything else.
    static std::expected<CoupleToken, LumaroCoreError> parse(std::string_view text);

    std::string authorizationHeaderValue() const;
    std::string redacted() const;
    /// The redacted form.
    std::string description() const { return redacted(); }

    void hashInto(Hasher& hasher) const;
    bool operator==(const CoupleToken&) const = default;
};

/// Writes the redacted form.
std::ostream& operator<<(std::ostream& out, const CoupleToken& token);

/// Whether the text may be a couple's id: not empty, of digits, "-" and letters that are not upper case.
bool isCoupleId(std::string_view text);

} // namespace lumaro
