// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Membership/HandOff.h"
#include "Lumaro/Model/Membership/Invitations.h"
#include "Lumaro/Model/Membership/Leaving.h"
#include "Lumaro/Model/Membership/PairingState.h"
#include "Lumaro/Model/Membership/People.h"
#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/Support/WallClock.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// How a join was asked for.
enum class JoinDoor : std::uint8_t { link, code };

/// What becomes of the board that this device is on when it joins another.
enum class OwnBoard : std::uint8_t {
    stays,      ///< a code is refused; of a link the person is asked
    askedAbout, ///< the person is asked, unless it was just started and nothing hangs on it
    left,       ///< the person has said so
};

/// What whoever asks for a join has said already.
struct JoinTerms {
    OwnBoard ownBoard = OwnBoard::stays;
    std::optional<std::string> name; ///< what this person is called, once the join has worked
};

/// How this device comes onto a board: by starting one, by a code or by an invite.
class Pairing {
public:
    /// All outlive this.
    struct Ports {
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
        BackgroundRunner& background;
        UserDefaults& defaults;
        DownloadOrigin& origin;
    };
    struct Neighbours {
        Membership& membership;
        const MembershipState& who;
        People& people;
        const PeopleState& names;
        Invitations& invitations;
        const InvitationState& invitation;
        Leaving& leaving;
        PairingClients& service;
        Announcer& announcer;
        std::function<std::size_t()> itemsOnBoard; ///< with those that wait for the room
        std::function<std::vector<std::string>()> serversNearby;
    };

    Pairing(Ports ports, PairingState& state, Neighbours neighbours);
    Pairing(const Pairing&) = delete;
    Pairing& operator=(const Pairing&) = delete;
    ~Pairing() = default;

    /// It is known whether this device is on a board. A new one looks for an invite that waits for it.
    void sessionRestored(bool isNew);

    void startOurBoard(std::optional<std::string> name = std::nullopt);
    /// What happens to the board that this device is on is said in the terms. It is left once the other is joined, and
    /// not when that does not work.
    void joinByCode(std::string_view typed, JoinTerms terms = {});
    /// A link, or a text around one. One that leads away from this device's board, or that the program was opened with
    /// and that names another server, is asked about first (`PairingPhase::Asking`).
    void joinByLink(std::string_view text, JoinTerms terms = {});
    /// The answer to `PairingPhase::Asking`; without it everything stays as it was.
    void acceptInvite(bool accepts);
    /// After `PairingPhase::NeedsServer`, once there is a server.
    void goOn();
    /// The answer to `PairingPhase::Choosing`.
    void chooseOneself(PartnerID slot);
    /// Takes a failure off the screen, and drops what waits for an answer of the person.
    void forgetFailure();
    void setOnboarding(std::optional<OnboardingStep> step);
    /// This device has left its board.
    void begunAnew();

private:
    struct Join {
        JoinDoor door = JoinDoor::code;
        std::string key;                      ///< the code's digits, or the invite's id
        std::optional<std::string> serverURL; ///< of a link that names one
        std::optional<PartnerID> slot;
        bool isQuiet = false; ///< nobody has asked for it
        std::optional<std::string> name{};
        std::optional<std::vector<std::string>> nearby{}; ///< servers that the code is still to be tried on
    };
    using Asked = std::move_only_function<void()>;

    void whenRestored(Asked pairing);
    void lookForInvite();
    void handedOff(const std::expected<HandOff::Invite, PairingFailure>& invite);
    void startedBoard(const std::expected<CreatedCouple, PairingFailure>& created, std::optional<std::string> name);
    bool isOnlyStarted() const;
    void askAboutOwnBoard();
    bool needsAsking(const Join& join, std::string_view text) const;
    void askAboutInvite();
    void join();
    bool tryNextNearby();
    void joined(const std::expected<Joined, PairingFailure>& answer);
    void keepToken(const Joined& joined);
    void settled(const Joined& joined, const std::optional<std::string>& name);
    void failed(const PairingFailure& failure, std::string_view what);
    void enter(PairingPhase::Value phase);
    std::string serverOf(const Join& join) const;
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "app", message); }

    Ports ports_;
    PairingState& state_;
    Neighbours neighbours_;
    std::optional<Join> join_;
    Asked asked_; ///< waits for the session to be restored
    PairingClient::Call call_;
    HandOff handOff_;
    std::unique_ptr<Sleeper::Wait> greetingTask_;
};

} // namespace lumaro
