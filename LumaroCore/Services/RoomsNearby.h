// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace lumaro {

/// A room that somebody keeps in this computer's network, as it tells of itself: anybody can say anything.
struct NearbyRoom {
    std::string name; ///< the owner's
    std::string
        host; ///< a name of the network ("ada-laptop.local") where this computer can look it up, else an address
    std::uint16_t port = 0;

    bool operator==(const NearbyRoom&) const = default;
};

/// Rooms that are told of in this computer's network (DNS-SD, RFC 6763, "_lumaro._tcp"). Where nothing does that, none
/// is found and nobody hears of this one. On the main thread.
class RoomsNearby {
public:
    /// Of those that are found: a network with more is one that plays tricks.
    static constexpr std::size_t maxRooms = 16;

    /// Dropping it ends what was asked for.
    class Handle {
    public:
        Handle() = default;
        Handle(const Handle&) = delete;
        Handle& operator=(const Handle&) = delete;
        virtual ~Handle() = default;
    };
    using Heard = std::function<void(const std::vector<NearbyRoom>&)>;

    RoomsNearby() = default;
    RoomsNearby(const RoomsNearby&) = delete;
    RoomsNearby& operator=(const RoomsNearby&) = delete;
    virtual ~RoomsNearby() = default;

    /// Tells the network of this computer's room, under its owner's name or, where that is taken, one like it.
    [[nodiscard]] virtual std::unique_ptr<Handle> announce(const std::string& name, std::uint16_t port) = 0;
    /// `heard` is told, from the event loop, of all that are there, at each change; never of this program's own.
    [[nodiscard]] virtual std::unique_ptr<Handle> browse(Heard heard) = 0;
};

} // namespace lumaro
