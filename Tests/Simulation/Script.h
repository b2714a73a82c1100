// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Identifiers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro::simulation {

/// What a script may have happen. Each can stand anywhere, and does nothing where it makes no sense: so steps can be
/// taken out of a script.
enum class Deed : std::uint8_t {
    act,
    bigAct,
    wildAct,
    fillBoard,
    takeBack,
    presence,
    music,
    place,
    weather,
    cut,
    kill,
    killAtCall,
    losePower,
    start,
    fillDisk,
    ailDisk,
    setClock,
    retryNow,
    reconnect,
    quit,
    leave,
    releasePartner,
    yearAway,
    killServer,
    killServerAt,
    startServer,
    slowStore,
    failStore,
    foreignCommit,
    sweep,
    setServerClock,
    calm,
    count,
};

constexpr std::array<std::string_view, static_cast<std::size_t>(Deed::count)> namesOf(Deed) {
    return {"acts",
            "acts at length",
            "acts wildly",
            "fills the board",
            "takes back",
            "sends presence",
            "plays, stops or shares music",
            "moves, says where they are, or shares it",
            "weather (0 open, 1 refusing, 2 silent, else slow)",
            "line cut, told to (0 both, 1 device, 2 server, 3 nobody)",
            "killed",
            "killed at file call",
            "loses power, torn bytes",
            "starts",
            "disk full, writes",
            "disk ails, calls",
            "clock off by, minutes",
            "retries now",
            "disconnects and connects",
            "quits",
            "leaves the board",
            "releases its partner",
            "stays away for a year",
            "server killed, told to (0 both, else nobody)",
            "server killed in a transaction at (1 before, 2 after, 3 amid reports)",
            "server starts",
            "store takes, ms",
            "store fails, transactions",
            "another node commits",
            "store swept",
            "server's clock off by, minutes",
            "calm"};
}

struct Step {
    Deed deed = Deed::calm;
    std::size_t device = 0;
    int amount = 0;
    std::uint64_t salt = 0; ///< seeds what the step leaves to chance
    int afterMs = 0;        ///< milliseconds that pass after it
};

/// A whole run: who takes part, and what happens.
struct Script {
    std::uint64_t seed = 0;
    std::size_t devices = 2;
    PartnerID thirdPerson = PartnerID::b;                 ///< whose second device the third is
    std::array<bool, 3> hasApplication{true, true, true}; ///< for each device; the others have the command alone
    bool secondJoinsByCode = true;
    std::size_t rememberedBatches = 256; ///< by a room that is loaded
    std::vector<Step> steps;
};

Script scriptOf(std::uint64_t seed);
std::string describe(const Step& step);

} // namespace lumaro::simulation
