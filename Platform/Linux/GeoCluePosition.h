// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Platform/Linux/PositionTry.h"

namespace lumaro {

/// The position that GeoClue finds, the location service of the system's bus. `neighbourhood` asks it for a
/// neighbourhood, `block` for a street: both are finer than what is shared, and neither wakes a satellite receiver, as
/// "exact" would. It outlives its searches. On the main thread.
class GeoCluePosition final : public PositionSource {
public:
    explicit GeoCluePosition(QDBusConnection bus = QDBusConnection::systemBus(), PositionLimits limits = {});

    [[nodiscard]] std::unique_ptr<Search> search(HerePrecision precision,
                                                 std::move_only_function<void(Answer)> then) override;

private:
    QDBusConnection bus_;
    PositionLimits limits_;
    std::unique_ptr<QObject> keeper_;
};

} // namespace lumaro
