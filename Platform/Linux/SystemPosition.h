// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/PositionSource.h"

namespace lumaro {

/// The computer's position by the way that is open to this process: in a sandbox the desktop's portal, else GeoClue.
/// It outlives its searches. On the main thread.
class SystemPosition final : public PositionSource {
public:
    SystemPosition();

    [[nodiscard]] std::unique_ptr<Search> search(HerePrecision precision,
                                                 std::move_only_function<void(Answer)> then) override;

private:
    std::unique_ptr<PositionSource> way_;
};

} // namespace lumaro
