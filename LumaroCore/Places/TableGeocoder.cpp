// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Places/TableGeocoder.h"

namespace lumaro {

std::unique_ptr<ReverseGeocoder::Request> TableGeocoder::name(Coordinates position,
                                                              std::move_only_function<void(PlaceFacts)> then) {
    then(table_.factsAt(position));
    return std::make_unique<Request>();
}

} // namespace lumaro
