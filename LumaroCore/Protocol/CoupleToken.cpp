// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/CoupleToken.h"

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Unicode.h"

#include <array>
#include <optional>
#include <ostream>

namespace lumaro {
namespace {

constexpr std::string_view redactedSecret = "\u2022\u2022\u2022\u2022";

enum class Hyphens : std::uint8_t { allowed, refused };

// Not empty, and nothing but digits, letters that are not upper case and, where they are allowed, hyphens.
bool isPlainWord(std::string_view text, Hyphens hyphens) {
    if (text.empty()) return false;
    while (!text.empty()) {
        const auto character = takeCharacter(text);
        if (!character) return false;
        if (*character == U'-' && hyphens == Hyphens::allowed) continue;
        const auto kind = classOf(*character);
        if (kind != CharacterClass::digit && kind != CharacterClass::otherLetter) return false;
    }
    return true;
}

// The four pieces between full stops; none when there are more or fewer.
std::optional<std::array<std::string_view, 4>> piecesOf(std::string_view text) {
    std::array<std::string_view, 4> pieces;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto stop = text.find('.');
        if ((stop == std::string_view::npos) != (i + 1 == pieces.size())) return std::nullopt;
        pieces[i] = text.substr(0, stop);
        if (stop != std::string_view::npos) text.remove_prefix(stop + 1);
    }
    return pieces;
}

} // namespace

bool isCoupleId(std::string_view text) {
    return isPlainWord(text, Hyphens::allowed);
}

std::expected<CoupleToken, LumaroCoreError> CoupleToken::parse(std::string_view text) {
    const auto raw = trimmed(text);
    const auto pieces = piecesOf(raw);
    if (pieces) {
        const auto [form, couple, slotName, secret] = *pieces;
        const auto slot = fromName<PartnerID>(slotName);
        if (form == prefix && isCoupleId(couple) && slot && isPlainWord(secret, Hyphens::refused)) {
            return CoupleToken{
                .raw = std::string{raw}, .coupleId = std::string{couple}, .slot = *slot, .secret = std::string{secret}};
        }
    }
    return std::unexpected(LumaroCoreError{LumaroCoreError::InvalidToken{std::string{raw}}});
}

std::string CoupleToken::authorizationHeaderValue() const {
    return "Bearer " + raw;
}

std::string CoupleToken::redacted() const {
    std::string text{prefix};
    return text.append(".").append(coupleId).append(".").append(nameOf(slot)).append(".").append(redactedSecret);
}

void CoupleToken::hashInto(Hasher& hasher) const {
    hasher.add(raw);
    hasher.add(coupleId);
    hasher.add(slot);
    hasher.add(secret);
}

std::ostream& operator<<(std::ostream& out, const CoupleToken& token) {
    return out << token.redacted();
}

} // namespace lumaro
