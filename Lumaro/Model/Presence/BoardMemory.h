// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/UserDefaults.h"
#include "LumaroCore/Support/Instant.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// A short text that is kept on this device for the board that it is on, and gone with another board.
class BoardMemory {
public:
    /// The defaults outlive this. `key` is of the setting, which holds the couple's id and the text.
    BoardMemory(UserDefaults& defaults, std::string_view key) : defaults_(defaults), key_(key) {}

    /// What is kept for that board from now on; what was kept for another is forgotten.
    std::optional<std::string> enter(std::string coupleId);
    void keep(std::string_view text);
    void forget();

private:
    UserDefaults& defaults_;
    std::string key_;
    std::string coupleId_; ///< empty on no board
};

/// An instant as it is kept, in milliseconds since 1970; none of a text that is none.
std::string textOf(Instant instant);
std::optional<Instant> instantIn(const std::optional<std::string>& text);

} // namespace lumaro
