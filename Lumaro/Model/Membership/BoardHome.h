// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Membership/Membership.h"
#include "Lumaro/Model/Membership/Pairing.h"
#include "LumaroCore/Pairing/RoomCheck.h"
#include "LumaroCore/Services/HomeRoom.h"
#include "LumaroCore/Services/RoomsNearby.h"

#include <expected>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumaro {

/// How the address stands that the person gave last.
struct AddressCheck {
    struct None {
        bool operator==(const None&) const = default;
    };
    struct Asking {
        bool operator==(const Asking&) const = default;
    };
    struct Good {
        ServerAddress address;
        bool operator==(const Good&) const = default;
    };
    struct Bad {
        std::string message; ///< for people
        bool operator==(const Bad&) const = default;
    };
    using Value = std::variant<None, Asking, Good, Bad>;
    Value value;

    bool operator==(const AddressCheck&) const = default;
};

/// Whether this computer keeps the room.
struct KeptHere {
    struct No {
        bool operator==(const No&) const = default;
    };
    struct Starting {
        bool operator==(const Starting&) const = default;
    };
    struct Kept {
        HomeRoom::Running running;
        bool operator==(const Kept&) const = default;
    };
    struct Failed {
        bool operator==(const Failed&) const = default;
    };
    using Value = std::variant<No, Starting, Kept, Failed>;
    Value value;

    bool operator==(const KeptHere&) const = default;
};

struct BoardHomeState {
    AddressCheck addressCheck;
    bool canKeepHere = false; ///< the room's program is on this computer
    KeptHere keptHere;
    /// While this device is on no board. Their names are strangers' words, on one line.
    std::vector<NearbyRoom> roomsNearby;
};

/// Where the board of this device lives: the server that it starts boards on and tries codes on, which may be a room
/// that this computer keeps itself. It is changed while this device is on no board; whoever comes onto one by a link or
/// a code has the server that these lead to. Of the rooms nearby none is joined but by a code that one of them knows.
class BoardHome {
public:
    /// All outlive this.
    struct Ports {
        Sleeper& sleeper;
        HttpClient& http;
        Log& log;
        UserDefaults& defaults;
        HomeRoom& homeRoom;
        RoomsNearby& nearby;
    };
    struct Neighbours {
        Membership& membership;
        const MembershipState& who;
        const std::string& myName;
        Pairing& pairing;
        Announcer& announcer;
    };

    BoardHome(Ports ports, BoardHomeState& state, Neighbours neighbours)
        : ports_(ports), state_(state), neighbours_(neighbours) {}
    BoardHome(const BoardHome&) = delete;
    BoardHome& operator=(const BoardHome&) = delete;
    ~BoardHome() = default;

    /// Whether a room answers at what was typed. The person hears of it either way.
    void check(std::string_view typed);
    /// The same, and it is used at once where one answers.
    void checkAndUse(std::string_view typed);
    /// The address that was found good is this device's server from now on. A code that waits for one is tried there.
    void useChecked();
    void forgetCheck();

    /// This computer keeps the room from now on, and after each start of the program. Off a board, it is the server.
    void keepHere();
    /// Nothing listens here any more. What hangs on the board stays on this computer's disk.
    void stopKeeping();

    /// Once, when the application starts.
    void start();
    /// This device has come onto a board, or off it.
    void lookAround();
    /// The person may be called otherwise.
    void tellName();
    /// The base URLs of the rooms nearby.
    std::vector<std::string> serversNearby() const;

private:
    void startRoom();
    void keeping(const std::expected<HomeRoom::Running, std::string>& running);
    void knock(const HomeRoom::Running& running, int attempt);
    void keeps(const HomeRoom::Running& running);
    void couldNotKeep(std::string_view why);
    void heard(const std::vector<NearbyRoom>& rooms);
    void found(const ServerAddress& address, RoomFinding finding);
    void enter(AddressCheck::Value check);

    Ports ports_;
    BoardHomeState& state_;
    Neighbours neighbours_;
    std::unique_ptr<HttpClient::Call> call_;
    std::unique_ptr<HttpClient::Call> knock_;
    std::unique_ptr<Sleeper::Wait> pause_;
    std::unique_ptr<RoomsNearby::Handle> browsing_;
    std::unique_ptr<RoomsNearby::Handle> announcing_;
    std::string announced_;     ///< the name
    bool isToBeUsed_ = false;   ///< the address that is being looked at, once it is found good
    bool isToBeServer_ = false; ///< the person asked for it, and not the start of the program
};

/// What people read of an address that cannot be a room's.
std::string_view textOf(ServerAddress::Fault fault);

} // namespace lumaro
