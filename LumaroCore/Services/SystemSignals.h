// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

namespace lumaro {

/// Hears what happens to this computer, on the thread that listens.
class SystemListener {
public:
    SystemListener() = default;
    SystemListener(const SystemListener&) = delete;
    SystemListener& operator=(const SystemListener&) = delete;
    virtual ~SystemListener() = default;

    virtual void wokeFromSleep() = 0;
    /// The computer's network connections changed: there may be a network again, or none. Changes that come together
    /// are told once.
    virtual void networkChanged() = 0;
};

/// Tells when the computer wakes up and when its network changes, as far as the system tells.
class SystemSignals {
public:
    /// Dropping it ends the listening.
    class Listening {
    public:
        Listening() = default;
        Listening(const Listening&) = delete;
        Listening& operator=(const Listening&) = delete;
        virtual ~Listening() = default;
    };

    SystemSignals() = default;
    SystemSignals(const SystemSignals&) = delete;
    SystemSignals& operator=(const SystemSignals&) = delete;
    virtual ~SystemSignals() = default;

    /// From now on tells the listener, never from within this call.
    [[nodiscard]] virtual std::unique_ptr<Listening> listen(SystemListener& listener) = 0;
};

} // namespace lumaro
