// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/BoardItem.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Support/Sleeper.h"

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <set>
#include <vector>

namespace lumaro {

/// The items that were taken down and are seen falling out of the window, each for the same span from its own
/// beginning.
class FallingItems {
public:
    static constexpr Seconds span{0.85};
    /// A whole board may fall; whatever falls beside that is gone at once, the longest fallen first.
    static constexpr std::size_t maxItems = BoardSpec::maxLiveItems;

    /// `landed` is called when an item has fallen. The sleeper outlives this.
    FallingItems(Sleeper& sleeper, std::function<void()> landed) : sleeper_(sleeper), landed_(std::move(landed)) {}

    void add(BoardItem item);
    /// It is on the board again.
    void remove(const UUID& id);
    void clear() { falling_.clear(); }

    std::set<UUID> ids() const;
    std::vector<BoardItem> items() const;

private:
    struct Falling {
        BoardItem item;
        std::unique_ptr<Sleeper::Wait> wait;
    };

    Sleeper& sleeper_;
    std::function<void()> landed_;
    std::list<Falling> falling_; ///< in the order in which they began
};

} // namespace lumaro
