// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/SystemSignals.h"

#include <QDBusConnection>

namespace lumaro {

/// Listens on the system's bus: to the login manager for the end of a sleep, and to NetworkManager. Where that does not
/// run, Qt's own knowledge of the network serves, if it has any.
class LoginSignals final : public SystemSignals {
public:
    explicit LoginSignals(QDBusConnection bus = QDBusConnection::systemBus());

    [[nodiscard]] std::unique_ptr<Listening> listen(SystemListener& listener) override;

private:
    QDBusConnection bus_;
};

} // namespace lumaro
