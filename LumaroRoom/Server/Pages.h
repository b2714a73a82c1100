// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Server/ServerHttp.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

// The pages that people see in a browser. They load nothing, run nothing and tell nobody where they were.

// `serverURL` is this server as people reach it.

/// The page behind an invite link: who invites, and the way into the application.
ServerResponse invitePage(std::string_view inviteId, std::string_view serverURL,
                          const std::optional<std::string>& inviter);
/// The page of an invite that leads nowhere any more.
ServerResponse goneInvitePage();
/// How to install; with the way into the application below it, when someone was invited.
ServerResponse downloadPage(std::string_view inviteId, std::string_view serverURL);

/// Text as it may stand in HTML, in attributes too.
std::string escapedHtml(std::string_view text);

} // namespace lumaro
