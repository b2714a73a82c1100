// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/BoardMemory.h"

#include "LumaroCore/Support/Wire.h"

#include <charconv>
#include <chrono>
#include <cstdint>
#include <utility>

namespace lumaro {

std::optional<std::string> BoardMemory::enter(std::string coupleId) {
    coupleId_ = std::move(coupleId);
    const auto kept = defaults_.string(key_);
    const auto start = coupleId_ + " ";
    if (kept && kept->starts_with(start)) return kept->substr(start.size());
    forget();
    return std::nullopt;
}

void BoardMemory::keep(std::string_view text) {
    if (!coupleId_.empty()) defaults_.setString(key_, coupleId_ + " " + std::string{text});
}

void BoardMemory::forget() {
    defaults_.remove(key_);
}

std::string textOf(Instant instant) {
    return std::to_string(std::chrono::floor<std::chrono::milliseconds>(instant).time_since_epoch().count());
}

std::optional<Instant> instantIn(const std::optional<std::string>& text) {
    std::int64_t count = 0;
    const char* const end = text ? text->data() + text->size() : nullptr;
    if (!text || std::from_chars(text->data(), end, count).ptr != end || text->empty()) return std::nullopt;
    return Wire::date(count);
}

} // namespace lumaro
