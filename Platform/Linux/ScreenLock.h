// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>

#include <functional>
#include <memory>

namespace lumaro {

/// Listens on the session's bus to the screen saver, under the names that it has on the different desktops.
class ScreenLock {
public:
    /// `changed` is told from the event loop when the screen is locked or goes blank, and when it is back.
    explicit ScreenLock(std::function<void(bool isLocked)> changed,
                        QDBusConnection bus = QDBusConnection::sessionBus());
    ScreenLock(const ScreenLock&) = delete;
    ScreenLock& operator=(const ScreenLock&) = delete;
    ~ScreenLock();

private:
    class Listening;
    std::unique_ptr<Listening> listening_;
};

} // namespace lumaro
