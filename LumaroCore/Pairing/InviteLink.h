// SPDX-License-Identifier: Apache-2.0
#pragma once

// What people type and paste to join a board.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// Digits of a join code.
inline constexpr std::size_t joinCodeLength = 6;

/// The first six digits of what was typed, as ASCII: digits of every script count, everything else is passed over.
/// Fewer are an incomplete code.
std::string normalizeCode(std::string_view typed);

/// Whether the text may be the id of an invite: 8 to 64 of the ASCII letters, digits, "-" and "_".
bool isInviteId(std::string_view text);

/// The invite id in a link (".../for/ID", ".../dl/ID", "lumaro://join-invite?i=ID") or in a text around one, the first
/// of several; none when there is no link. An id alone is no link. The id ends at the first character that cannot be
/// part of one, so a full stop behind a link does no harm.
std::optional<std::string> inviteIdIn(std::string_view text);

/// The base URL of the server that the link of `inviteIdIn` names, without a slash at its end: what stands before its
/// path in a web link, the query key "s" of the program's own ("lumaro://join-invite?i=ID&s=https%3A%2F%2F..."). None
/// when it names no http or https server of at most 200 characters.
std::optional<std::string> inviteServerIn(std::string_view text);

/// The program's own link to the invite of that id (`isInviteId`) on that server, as both of the above read it.
std::string ownInviteLink(std::string_view inviteId, std::string_view serverURL);

} // namespace lumaro
