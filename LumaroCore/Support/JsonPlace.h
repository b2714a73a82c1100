// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lumaro {

/// Where a reader is in a JSON text: a step into an array or an object, linked to the one around it. It is the current
/// place for as long as it lives.
struct JsonPlace {
    enum class In { array, object };

    JsonPlace(JsonPlace*& current, In container)
        : here(current), outer(current), depth(outer == nullptr ? 1 : outer->depth + 1), in(container) {
        here = this;
    }
    ~JsonPlace() { here = outer; }
    JsonPlace(const JsonPlace&) = delete;
    JsonPlace& operator=(const JsonPlace&) = delete;

    /// Keeps a key that nothing else keeps for as long as the path may name it.
    void hold(std::string_view text) {
        held.assign(text);
        key = held;
    }

    /// The path from the root, `$.items[3].center`; `place` may be null, for the root.
    static std::string path(const JsonPlace* place);

    JsonPlace*& here;
    JsonPlace* const outer;
    const int depth;
    const In in;
    std::size_t index = 0;
    std::string_view key; ///< has no data until one was read
    std::string held;
};

} // namespace lumaro
