// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fields.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// What a server that has a city page says of it: where the page is, and the key that it asks for. Read from a server,
/// both are as `isWindowPage` and `isWindowKey` want them, else there is no value.
struct WindowKey {
    std::string page;
    std::string key; ///< a secret of the server's: in no URL, no log and no list of processes

    static constexpr bool hasOwnJson = true;
    static constexpr auto fields() {
        return std::tuple{Field{"page", &WindowKey::page}, Field{"key", &WindowKey::key}};
    }
    bool operator==(const WindowKey&) const = default;
};

inline constexpr std::size_t maxWindowPageBytes = 2048;
inline constexpr std::size_t maxWindowKeyBytes = 256;

/// Whether a page that learns a position may be there: an https URL, or an http one of this computer itself
/// (`localhost`, `127.0.0.1`, `[::1]`), without a user and a fragment.
bool isWindowPage(std::string_view url);
/// Whether it may be a page's key: visible ASCII characters, one or more.
bool isWindowKey(std::string_view key);

} // namespace lumaro
