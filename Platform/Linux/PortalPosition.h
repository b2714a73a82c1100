// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Platform/Linux/PositionTry.h"

namespace lumaro {

/// The position through the desktop's portal, org.freedesktop.portal.Location on the session's bus: the way out of a
/// sandbox. The portal asks the person, and remembers the answer. `neighbourhood` asks it for a neighbourhood, `block`
/// for a street. It outlives its searches. On the main thread.
class PortalPosition final : public PositionSource {
public:
    explicit PortalPosition(QDBusConnection bus = QDBusConnection::sessionBus(), PositionLimits limits = {});

    [[nodiscard]] std::unique_ptr<Search> search(HerePrecision precision,
                                                 std::move_only_function<void(Answer)> then) override;

private:
    QDBusConnection bus_;
    PositionLimits limits_;
    std::unique_ptr<QObject> keeper_;
};

} // namespace lumaro
