// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroRoom/Pairing/RandomSource.h"
#include "LumaroRoom/Store/Store.h"

#include <chrono>
#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// Why the pairing service refuses a call, as it goes to the client.
struct PairingRefusal {
    int status = 400; ///< of HTTP
    std::string code;
    std::string message;
    std::optional<SlotNames> names = std::nullopt;     ///< of "choose_person"
    std::optional<PartnerID> suggested = std::nullopt; ///< of "choose_person"
};

/// An answer of the service, a refusal, or a store that did not do its work.
template <class T>
using PairingResult = StoreResult<std::expected<T, PairingRefusal>>;

/// How couples come to be and who is on them: pure code over the store, run inside one of its transactions. A refusal
/// has written nothing but the count of wrong codes. No answer tells by its time or text whether a code or link exists
/// that is not the caller's business.
///
/// Names are trimmed; an empty one leaves the name as it is, but for `setName`, which then forgets it.
class PairingService {
public:
    struct Limits {
        std::chrono::seconds codeLifetime{600};
        std::chrono::days linkLifetime{30};
        std::chrono::seconds wrongCodeWindow{600};
        std::size_t wrongCodesPerOrigin = 10;
        std::size_t wrongCodesInAll = 200;
        std::size_t devicesPerCouple = 16;
        std::size_t maxNameBytes = 200;
        std::size_t maxDeviceIdBytes = 200;
    };

    /// `publicURL` is what links begin with. The source outlives the service.
    PairingService(std::string publicURL, RandomSource& random, Limits limits);

    /// Without a slash at its end; may be asked for on any thread.
    const std::string& publicURL() const { return publicURL_; }

    struct Person {
        std::string deviceId;
        std::string name;
        std::optional<PartnerID> slot; ///< the answer to "choose_person"
    };

    PairingResult<CreatedCouple> createCouple(Store& store, const Person& person, Instant now);
    /// Wrong codes count against `origin`, used and expired ones too. One that lets the caller choose stays good.
    PairingResult<Joined> joinByCode(Store& store, std::string_view code, const Person& person, std::string_view origin,
                                     Instant now);
    PairingResult<Joined> joinByLink(Store& store, std::string_view inviteId, const Person& person, Instant now);
    /// An invite that is alive, and who invites.
    PairingResult<Handoff> handoff(Store& store, const std::optional<std::string>& inviteId, Instant now);

    // Calls on a couple: by one of its devices, which the caller has found by its token.

    /// The couple's link while it lives, else a new one.
    PairingResult<Invite> mintLink(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                   std::string_view name, Instant now);
    /// Ends every link and code of the couple.
    PairingResult<void> resetLinks(Store& store, std::string_view coupleId, const DeviceRecord& by, Instant now);
    /// Ends the couple's other codes.
    PairingResult<ShareCode> createCode(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                        std::string_view name, Instant now);
    PairingResult<void> setName(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                std::string_view name) const;
    /// Takes the device off. A slot's name goes with its last device.
    PairingResult<void> leave(Store& store, std::string_view coupleId, const DeviceRecord& by, Instant now);
    /// Takes the other slot's devices off and ends every link and code, so that they do not walk back in.
    PairingResult<void> releasePartner(Store& store, std::string_view coupleId, const DeviceRecord& by, Instant now);

private:
    /// A way onto a board that was good.
    struct Way {
        std::string coupleId;
        PartnerID inviter = PartnerID::a;
    };

    std::expected<Person, PairingRefusal> checked(const Person& person) const;
    PairingResult<Joined> join(Store& store, const Way& way, const Person& joiner, const PairingRefusal& coupleGone);
    StoreResult<std::string> admit(Store& store, std::string_view coupleId, const Person& person, PartnerID slot);
    StoreResult<Invite> invite(Store& store, std::string_view coupleId, PartnerID inviter, Instant now);
    StoreResult<std::optional<CodeRecord>> freshCode(Store& store, std::string_view coupleId, PartnerID inviter,
                                                     Instant now);
    PairingResult<void> endWaysIn(Store& store, std::string_view coupleId, PartnerID inviter, Instant now);
    /// Says what the person is called when `name` says it; a refusal when it cannot be a name.
    PairingResult<void> noteName(Store& store, std::string_view coupleId, PartnerID slot, std::string_view name) const;

    std::string publicURL_;
    RandomSource& random_;
    Limits limits_;
};

} // namespace lumaro
