// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/ReverseGeocoder.h"
#include "LumaroCore/Places/PlaceTable.h"

namespace lumaro {

/// Names positions by the table of places, at once and without a network.
class TableGeocoder final : public ReverseGeocoder {
public:
    explicit TableGeocoder(PlaceTable table) : table_{table} {}

    /// Calls `then` before it returns.
    [[nodiscard]] std::unique_ptr<Request> name(Coordinates position,
                                                std::move_only_function<void(PlaceFacts)> then) override;

private:
    PlaceTable table_;
};

} // namespace lumaro
