// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/JsonPlace.h"

#include <ranges>
#include <vector>

namespace lumaro {

std::string JsonPlace::path(const JsonPlace* place) {
    std::vector<const JsonPlace*> steps;
    for (; place != nullptr; place = place->outer) steps.push_back(place);
    std::string path = "$";
    for (const auto* step : steps | std::views::reverse) {
        if (step->in == In::array) {
            path.append("[").append(std::to_string(step->index)).append("]");
        } else if (step->key.data() != nullptr) {
            path.append(".").append(step->key);
        }
    }
    return path;
}

} // namespace lumaro
