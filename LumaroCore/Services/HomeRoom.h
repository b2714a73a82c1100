// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <string>

namespace lumaro {

/// The room that this computer keeps for its person, with the boards in it on this computer's disk. On the main thread.
class HomeRoom {
public:
    /// How long it goes on by itself.
    enum class Lasts : std::uint8_t {
        withLogin,   ///< from when the person logs in, whatever this program does
        withProgram, ///< as long as this program runs
    };
    struct Running {
        std::uint16_t port = 0;
        std::string host; ///< by which others of the network reach this computer: "ada-laptop.local", "192.168.1.4"
        Lasts lasts = Lasts::withLogin;

        bool operator==(const Running&) const = default;
    };
    /// The error is for the log.
    using Started = std::move_only_function<void(std::expected<Running, std::string>)>;

    HomeRoom() = default;
    HomeRoom(const HomeRoom&) = delete;
    HomeRoom& operator=(const HomeRoom&) = delete;
    virtual ~HomeRoom() = default;

    /// Whether the room's program is on this computer.
    virtual bool isInstalled() = 0;
    /// From now on it runs and listens on that port, also after a crash; with 0 on a free one. Only who is in this
    /// computer's network, or in a private one with it, can connect. `then` is told once, from the event loop; it may
    /// take a moment from then on until the room answers. Starting what runs already changes nothing but what differs.
    virtual void start(std::uint16_t port, Started then) = 0;
    /// Nothing listens any more; the boards stay on the disk. A start that is under way is not told of.
    virtual void stop() = 0;
};

} // namespace lumaro
