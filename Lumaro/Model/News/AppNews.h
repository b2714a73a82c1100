// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/PartnerDeed.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// A piece of the application's state. Each part of the application changes its own.
enum class AppChange : std::uint8_t {
    board,       ///< what is on it, arrives, falls or rings
    editor,      ///< what is selected, in the hand, written or drawn
    connection,  ///< the line to the room, and what waits for it
    membership,  ///< whether this device is on a board, and where its key is kept
    pairing,     ///< how it comes onto one
    people,      ///< who the two are
    invitations, ///< link and code
    partner,     ///< what is seen of the partner
    ownPresence, ///< what the partner sees
    desktop,     ///< whether the board is on the desktop
    permissions,
    music,    ///< whether it is shared, and what of it
    place,    ///< whether it is shared, and what is known of it
    hours,    ///< whether they are shared
    pictures, ///< one has come
};

/// Some of them.
class AppChanges {
public:
    constexpr AppChanges() = default;
    constexpr bool has(AppChange change) const { return (bits_ & bit(change)) != 0; }
    constexpr bool isOnly(AppChange change) const { return bits_ == bit(change); }
    constexpr bool isEmpty() const { return bits_ == 0; }
    constexpr void add(AppChange change) { bits_ |= bit(change); }

private:
    static constexpr std::uint32_t bit(AppChange change) { return std::uint32_t{1} << std::to_underlying(change); }

    std::uint32_t bits_ = 0;
};

/// What has happened since the application was last heard of.
struct AppNews {
    AppChanges changed;
    std::vector<std::string> notices;                   ///< texts for people about what did not work out
    std::vector<std::optional<std::string>> quickNotes; ///< asked for, with the text to begin with
    std::vector<PartnerDeed> deeds;

    bool isBoardWanted = false; ///< the person wants to see the board, at the item that is selected

    bool isEmpty() const {
        return changed.isEmpty() && notices.empty() && quickNotes.empty() && deeds.empty() && !isBoardWanted;
    }
};

} // namespace lumaro
