// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/News/PartnerDeed.h"

#include "LumaroCore/BoardLogic/EditParts.h"

#include <algorithm>
#include <iterator>

namespace lumaro {
namespace {

bool hangsElsewhere(const BoardItem& before, const BoardItem& after) {
    return before.center != after.center || before.rotationDegrees != after.rotationDegrees ||
           before.scale != after.scale;
}

bool goesAlong(const PartnerDeed& deed, const std::vector<PartnerDeed>& deeds) {
    using enum PartnerDeed::What;
    if (deed.what != tookDown && deed.what != moved) return false;
    return std::ranges::any_of(deeds, [&](const PartnerDeed& other) {
        return other.what == deed.what && Edits::isDrawnOn(deed.item, other.item.id);
    });
}

} // namespace

std::vector<PartnerDeed> deedsBetween(const Board& before, const Board& after) {
    using enum PartnerDeed::What;
    std::vector<PartnerDeed> deeds;
    for (const auto& item : before.items) {
        if (after.find(item.id) == nullptr) deeds.push_back({tookDown, item});
    }
    for (const auto& item : after.items) {
        const auto* const was = before.find(item.id);
        if (was == nullptr) {
            deeds.push_back({putUp, item});
        } else if (was->payload != item.payload) {
            deeds.push_back({changed, item});
        } else if (hangsElsewhere(*was, item)) {
            deeds.push_back({moved, item});
        }
    }
    std::vector<PartnerDeed> own;
    std::ranges::copy_if(deeds, std::back_inserter(own), [&](const auto& deed) { return !goesAlong(deed, deeds); });
    return own;
}

} // namespace lumaro
