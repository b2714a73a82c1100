// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/FallingItems.h"

#include <utility>

namespace lumaro {

void FallingItems::add(BoardItem item) {
    const auto id = item.id;
    remove(id);
    if (falling_.size() == maxItems) falling_.pop_front();
    falling_.push_back({std::move(item), sleeper_.wait(span, [this, id] {
                            remove(id);
                            landed_();
                        })});
}

void FallingItems::remove(const UUID& id) {
    std::erase_if(falling_, [&](const Falling& one) { return one.item.id == id; });
}

std::set<UUID> FallingItems::ids() const {
    std::set<UUID> ids;
    for (const auto& one : falling_) ids.insert(one.item.id);
    return ids;
}

std::vector<BoardItem> FallingItems::items() const {
    std::vector<BoardItem> items;
    for (const auto& one : falling_) items.push_back(one.item);
    return items;
}

} // namespace lumaro
