// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/BoardHome.h"

#include "LumaroCore/Support/OneLine.h"
#include "LumaroCore/Support/Unicode.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace lumaro {
namespace {

std::string_view textOf(RoomFinding finding, bool isEncrypted) {
    switch (finding) {
    case RoomFinding::room: return "";
    case RoomFinding::newerRoom: return "that's a room of a newer lumaro. update this one first?";
    case RoomFinding::noRoom: return "something answers there, but it's no room. is the address right?";
    case RoomFinding::unwell: return "that server isn't well just now. try again in a moment?";
    case RoomFinding::unreachable:
        return isEncrypted
                   ? "nothing answers there, or its certificate isn't right. is that the address, and are you online?"
                   : "nothing answers there. is the address right, and is its computer on?";
    }
    std::unreachable();
}

constexpr std::string_view keepsRoomKey = "keepsRoom";
constexpr std::string_view portKey = "homeRoomPort";
// A service takes a moment until it answers.
constexpr int mostKnocks = 20;
constexpr Seconds knockPause{0.5};
constexpr std::size_t maxOwnerCharacters = 40;

/// Of the room that this computer keeps: it answers here, whatever becomes of the network.
ServerAddress ownAddress(std::uint16_t port) {
    return *ServerAddress::parse("http://127.0.0.1:" + std::to_string(port));
}

// Whoever tells of a room far away is not in this network.
std::optional<ServerAddress> nearbyAddress(const NearbyRoom& room) {
    const auto address = ServerAddress::parse("http://" + room.host + ":" + std::to_string(room.port));
    return address ? std::optional{*address} : std::nullopt;
}

} // namespace

std::string_view textOf(ServerAddress::Fault fault) {
    switch (fault) {
    case ServerAddress::Fault::empty: return "type its address, like board.example.";
    case ServerAddress::Fault::noAddress: return "that's no address. one looks like board.example.";
    case ServerAddress::Fault::notEncrypted:
        return "out on the internet a room needs https: without it, whoever is on the way reads along.";
    }
    std::unreachable();
}

void BoardHome::enter(AddressCheck::Value check) {
    state_.addressCheck.value = std::move(check);
    neighbours_.announcer.changed(AppChange::membership);
}

void BoardHome::checkAndUse(std::string_view typed) {
    const Announcer::Update update{neighbours_.announcer};
    check(typed);
    isToBeUsed_ = std::holds_alternative<AddressCheck::Asking>(state_.addressCheck.value);
}

void BoardHome::check(std::string_view typed) {
    const Announcer::Update update{neighbours_.announcer};
    call_ = nullptr;
    isToBeUsed_ = false;
    auto address = ServerAddress::parse(typed);
    if (!address) return enter(AddressCheck::Bad{std::string{lumaro::textOf(address.error())}});
    enter(AddressCheck::Asking{});
    call_ =
        checkRoom(ports_.http, *address, [this, address = *address](RoomFinding finding) { found(address, finding); });
}

void BoardHome::found(const ServerAddress& address, RoomFinding finding) {
    const auto call = std::move(call_);
    const Announcer::Update update{neighbours_.announcer};
    const bool isToBeUsed = std::exchange(isToBeUsed_, false);
    if (finding == RoomFinding::room) {
        enter(AddressCheck::Good{address});
        if (isToBeUsed) useChecked();
        return;
    }
    ports_.log.write(LogLevel::info, "app", "no room at the address that was given");
    enter(AddressCheck::Bad{std::string{textOf(finding, address.isEncrypted())}});
}

void BoardHome::useChecked() {
    const auto* const good = std::get_if<AddressCheck::Good>(&state_.addressCheck.value);
    if (good == nullptr || neighbours_.who.token) return;
    const Announcer::Update update{neighbours_.announcer};
    const auto url = good->address.url();
    enter(AddressCheck::None{});
    neighbours_.membership.setServerURL(url);
    neighbours_.pairing.goOn();
}

void BoardHome::forgetCheck() {
    call_ = nullptr;
    if (state_.addressCheck != AddressCheck{}) enter(AddressCheck::None{});
}

// A room of this computer's own.

void BoardHome::start() {
    state_.canKeepHere = ports_.homeRoom.isInstalled();
    if (ports_.defaults.boolean(keepsRoomKey).value_or(false)) startRoom();
}

void BoardHome::keepHere() {
    isToBeServer_ = true;
    startRoom();
}

// The port stays the same for as long as a board may live there: the partner's device knows no other.
void BoardHome::startRoom() {
    if (std::holds_alternative<KeptHere::Starting>(state_.keptHere.value)) return;
    const Announcer::Update update{neighbours_.announcer};
    if (!state_.canKeepHere) return couldNotKeep("its program is not installed");
    state_.keptHere.value = KeptHere::Starting{};
    neighbours_.announcer.changed(AppChange::membership);
    const auto text = ports_.defaults.string(portKey).value_or("");
    std::uint16_t port = 0;
    std::from_chars(text.data(), text.data() + text.size(), port);
    ports_.homeRoom.start(port,
                          [this](const std::expected<HomeRoom::Running, std::string>& running) { keeping(running); });
}

void BoardHome::keeping(const std::expected<HomeRoom::Running, std::string>& running) {
    const Announcer::Update update{neighbours_.announcer};
    if (!running) return couldNotKeep(running.error());
    knock(*running, 1);
}

// It is kept once it answers, and not before.
void BoardHome::knock(const HomeRoom::Running& running, int attempt) {
    knock_ = checkRoom(ports_.http, ownAddress(running.port), [this, running, attempt](RoomFinding finding) {
        const auto call = std::move(knock_);
        const Announcer::Update update{neighbours_.announcer};
        if (finding == RoomFinding::room) return keeps(running);
        if (attempt == mostKnocks) return couldNotKeep("it does not answer");
        pause_ = ports_.sleeper.wait(knockPause, [this, running, attempt] { knock(running, attempt + 1); });
    });
}

void BoardHome::keeps(const HomeRoom::Running& running) {
    ports_.defaults.setBoolean(keepsRoomKey, true);
    ports_.defaults.setString(portKey, std::to_string(running.port));
    state_.keptHere.value = KeptHere::Kept{running};
    neighbours_.announcer.changed(AppChange::membership);
    if (std::exchange(isToBeServer_, false)) neighbours_.membership.setServerURL(ownAddress(running.port).url());
    announcing_.reset();
    tellName();
}

void BoardHome::couldNotKeep(std::string_view why) {
    ports_.log.write(LogLevel::error, "app", "the room of this computer does not run: " + std::string{why});
    state_.keptHere.value = KeptHere::Failed{};
    neighbours_.announcer.changed(AppChange::membership);
}

void BoardHome::stopKeeping() {
    const Announcer::Update update{neighbours_.announcer};
    const auto* const kept = std::get_if<KeptHere::Kept>(&state_.keptHere.value);
    const bool isServer = kept != nullptr && neighbours_.membership.serverURL() == ownAddress(kept->running.port).url();
    knock_ = nullptr;
    pause_.reset();
    announcing_.reset();
    ports_.homeRoom.stop();
    ports_.defaults.remove(keepsRoomKey);
    state_.keptHere.value = KeptHere::No{};
    neighbours_.announcer.changed(AppChange::membership);
    if (isServer) neighbours_.membership.setServerURL("");
}

void BoardHome::tellName() {
    const auto* const kept = std::get_if<KeptHere::Kept>(&state_.keptHere.value);
    if (kept == nullptr || (announcing_ && announced_ == neighbours_.myName)) return;
    announced_ = neighbours_.myName;
    announcing_.reset();
    announcing_ = ports_.nearby.announce(announced_, kept->running.port);
}

// Rooms of others.

void BoardHome::lookAround() {
    if (neighbours_.who.token) {
        browsing_.reset();
        state_.roomsNearby.clear();
    } else if (!browsing_) {
        browsing_ = ports_.nearby.browse([this](const std::vector<NearbyRoom>& rooms) { heard(rooms); });
    }
}

void BoardHome::heard(const std::vector<NearbyRoom>& rooms) {
    const Announcer::Update update{neighbours_.announcer};
    state_.roomsNearby.clear();
    for (const auto& room : rooms) {
        if (state_.roomsNearby.size() == RoomsNearby::maxRooms) break;
        if (!nearbyAddress(room)) continue;
        state_.roomsNearby.push_back(
            {std::string{firstCharacters(onOneLine(room.name), maxOwnerCharacters)}, room.host, room.port});
    }
    neighbours_.announcer.changed(AppChange::membership);
}

std::vector<std::string> BoardHome::serversNearby() const {
    std::vector<std::string> servers;
    for (const auto& room : state_.roomsNearby) {
        if (const auto address = nearbyAddress(room)) servers.push_back(address->url());
    }
    return servers;
}

} // namespace lumaro
