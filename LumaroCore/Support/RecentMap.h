// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <list>
#include <utility>

namespace lumaro {

/// A small map that holds so many entries and, past that, forgets those put in longest ago. Looks through all of them.
template <class Key, class Value>
class RecentMap {
public:
    explicit RecentMap(std::size_t limit) : limit_(limit) {}

    /// The entry of this key, newest from now on.
    void put(Key key, Value value) {
        erase(key);
        entries_.emplace_front(std::move(key), std::move(value));
        if (entries_.size() > limit_) entries_.pop_back();
    }
    /// Null when there is none.
    template <class Like>
    const Value* find(const Like& key) const {
        const auto found = std::ranges::find_if(entries_, [&](const auto& entry) { return entry.first == key; });
        return found == entries_.end() ? nullptr : &found->second;
    }
    template <class Like>
    void erase(const Like& key) {
        entries_.remove_if([&](const auto& entry) { return entry.first == key; });
    }
    /// Goes through all, the newest first, and forgets those of which `isToGo(key, value)` says so.
    template <class Predicate>
    void eraseIf(Predicate isToGo) {
        entries_.remove_if([&](const auto& entry) { return isToGo(entry.first, entry.second); });
    }
    void clear() { entries_.clear(); }

private:
    std::size_t limit_;
    std::list<std::pair<Key, Value>> entries_;
};

} // namespace lumaro
