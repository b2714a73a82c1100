// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Services/NotificationCenter.h"
#include "LumaroCore/Services/UserDefaults.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumaro {

/// What a person wants of an item that they were notified of.
struct NewsAnswer {
    enum class Wish : std::uint8_t { show, coolDown, rest };
    Wish wish = Wish::show;
    UUID item;
};

/// Notifies the person of what happens on the board, as far as the settings say so, and hears what they do with that.
/// What the partner puts up is one notification, which counts until the person has seen the board. Nothing here
/// survives a restart.
class BoardNotifications {
public:
    /// Both outlive this.
    struct Ports {
        NotificationCenter& center;
        UserDefaults& defaults;
    };

    BoardNotifications(Ports ports, std::function<void(const NewsAnswer&)> answered);
    BoardNotifications(const BoardNotifications&) = delete;
    BoardNotifications& operator=(const BoardNotifications&) = delete;
    ~BoardNotifications() { ports_.center.onAnswer(nullptr); }

    /// The partner put these up, which are on `board` and not none; `picturePath` is of one of them.
    void tellOfItems(std::span<const BoardItem* const> items, const Board& board, std::string_view partnerName,
                     std::optional<std::string> picturePath);
    /// A phase of that block card, which this person is in, is over.
    void tellOfBlock(const BoardItem& card, std::string_view partnerName);
    /// The person looks at the board, or no longer.
    void setLooking(bool isLooking);
    /// The board is left.
    void forget();

private:
    void hear(const NotificationAnswer& answer);
    void forgetItems();

    Ports ports_;
    std::function<void(const NewsAnswer&)> answered_;
    bool isLooking_ = false;
    std::size_t count_ = 0;      ///< of items that were told of and not seen
    std::optional<UUID> newest_; ///< of them
    std::optional<UUID> block_;  ///< the card that was told of last
};

} // namespace lumaro
