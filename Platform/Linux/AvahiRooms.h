// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/RoomsNearby.h"

#include <QDBusConnection>

namespace lumaro {

/// Through Avahi on the system's bus, by its own interface (org.freedesktop.Avahi). When the daemon comes, or comes
/// back, what was asked for is asked for anew.
class AvahiRooms final : public RoomsNearby {
public:
    explicit AvahiRooms(QDBusConnection bus = QDBusConnection::systemBus()) : bus_(std::move(bus)) {}

    [[nodiscard]] std::unique_ptr<Handle> announce(const std::string& name, std::uint16_t port) override;
    [[nodiscard]] std::unique_ptr<Handle> browse(Heard heard) override;

private:
    QDBusConnection bus_;
};

} // namespace lumaro
