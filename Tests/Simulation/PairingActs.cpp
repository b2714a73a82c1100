// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/PairingActs.h"

#include "LumaroRoom/Pairing/Secrets.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace lumaro::simulation {
namespace {

// After this a join or leave that was not answered is given up.
constexpr Seconds patience{5};

const DeviceRecord* recordOf(const Members& members, const SimDevice& device) {
    return device.token() ? members.findToken(sha256(device.token()->raw)) : nullptr;
}

template <class T>
PairingResult<T> refusal(std::string code) {
    return std::expected<T, PairingRefusal>{
        std::unexpected(PairingRefusal{.status = 401, .code = std::move(code), .message = {}})};
}

PairingService::Person personOf(const SimDevice& device, std::optional<PartnerID> slot) {
    return {.deviceId = device.deviceId(), .name = device.name(), .slot = slot};
}

} // namespace

void PairingActs::later(SimDevice& device, std::function<void()> then) {
    if (network_.weather(device.index()).reach != Weather::Reach::open) {
        wait_ = time_.wait(patience, [this] { done(); });
    } else {
        wait_ = time_.wait(network_.delay(device.index()), std::move(then));
    }
}

void PairingActs::done() {
    isBusy_ = false;
    ++errand_;
}

template <class T>
void PairingActs::ask(SimDevice& device, Call<T> call, Heard<T> then) {
    isBusy_ = true;
    const auto errand = errand_;
    later(device, [this, errand, &device, call = std::move(call), then = std::move(then)] {
        // Until the answer comes: it does not when the server dies.
        wait_ = time_.wait(patience, [this] { done(); });
        server_.call<T>(
            [this, call](PairingService& service, Store& store, Instant now) -> PairingResult<T> {
                const auto members = store.members(coupleId_);
                if (!members) return std::unexpected(members.error());
                return call(service, store, *members, now);
            },
            [this, errand, &device, then](std::optional<std::expected<T, PairingRefusal>> heard) {
                if (!coupleId_.empty()) server_.refreshMembers(coupleId_);
                if (errand == errand_) answer<T>(device, std::move(heard), then);
            });
    });
}

template <class T>
void PairingActs::answer(SimDevice& device, std::optional<std::expected<T, PairingRefusal>> heard, Heard<T> then) {
    if (!heard) {
        wait_ = time_.wait(patience, [this] { done(); });
        return;
    }
    later(device, [this, heard = std::move(*heard), then = std::move(then)] {
        done();
        then(heard);
    });
}

void PairingActs::create(SimDevice& device) {
    ask<CreatedCouple>(
        device,
        [&device](PairingService& service, Store& store, const Members&, Instant now) {
            return service.createCouple(store, personOf(device, {}), now);
        },
        [this, &device](const std::expected<CreatedCouple, PairingRefusal>& created) {
            coupleId_ = created->coupleId;
            device.pair(CoupleToken::parse(created->token).value());
            device.start();
        });
}

void PairingActs::joined(SimDevice& device, const std::expected<Joined, PairingRefusal>& answer,
                         const std::function<void(PartnerID)>& again) {
    if (answer) {
        device.pair(CoupleToken::parse(answer->token).value());
        device.start();
    } else if (answer.error().code == "choose_person") {
        coverage_.note(Met::personsChosen);
        again(device.person());
    }
}

void PairingActs::joinByCode(SimDevice& device, SimDevice& inviter) {
    ask<ShareCode>(
        inviter,
        [&inviter](PairingService& service, Store& store, const Members& members, Instant now) {
            const auto* record = recordOf(members, inviter);
            if (record == nullptr) return refusal<ShareCode>("unauthorized");
            return service.createCode(store, inviter.token()->coupleId, *record, inviter.name(), now);
        },
        [this, &device](const std::expected<ShareCode, PairingRefusal>& code) {
            if (!code) return;
            ask<Joined>(
                device,
                [&device, digits = code->code](PairingService& service, Store& store, const Members&, Instant now) {
                    return service.joinByCode(store, digits, personOf(device, {}), device.name(), now);
                },
                [this, &device](const std::expected<Joined, PairingRefusal>& answer) {
                    coverage_.note(Met::joinsByCode);
                    joined(device, answer, [](PartnerID) {});
                });
        });
}

void PairingActs::joinByLink(SimDevice& device) {
    // Whoever has a token asks; one that is not accepted any more is refused, and another device tries next time.
    auto inviters = devices_ | std::views::filter([&](const auto& other) {
                        return other.get() != &device && !other->needsToken() && other->program() != nullptr;
                    });
    const auto count = std::ranges::distance(inviters);
    if (count == 0) return;
    auto& host = **std::ranges::next(inviters.begin(), static_cast<std::ptrdiff_t>(errand_) % count);
    ask<Invite>(
        host,
        [&host](PairingService& service, Store& store, const Members& members, Instant now) {
            const auto* record = recordOf(members, host);
            if (record == nullptr) return refusal<Invite>("unauthorized");
            return service.mintLink(store, host.token()->coupleId, *record, host.name(), now);
        },
        [this, &device](const std::expected<Invite, PairingRefusal>& invite) {
            if (invite) useLink(device, invite->inviteId, std::nullopt);
        });
}

void PairingActs::useLink(SimDevice& device, const std::string& inviteId, std::optional<PartnerID> slot) {
    ask<Joined>(
        device,
        [&device, inviteId, slot](PairingService& service, Store& store, const Members&, Instant now) {
            return service.joinByLink(store, inviteId, personOf(device, slot), now);
        },
        [this, &device, inviteId](const std::expected<Joined, PairingRefusal>& answer) {
            coverage_.note(Met::joinsByLink);
            joined(device, answer, [&](PartnerID person) { useLink(device, inviteId, person); });
        });
}

void PairingActs::leave(SimDevice& device) {
    if (isBusy_ || device.needsToken()) return;
    ask<void>(
        device,
        [this, &device](PairingService& service, Store& store, const Members& members, Instant now) {
            const auto* record = recordOf(members, device);
            const bool isLast = std::ranges::none_of(devices_, [&](const auto& other) {
                return other.get() != &device && recordOf(members, *other) != nullptr;
            });
            if (record == nullptr || isLast) return refusal<void>("last_device");
            return service.leave(store, device.token()->coupleId, *record, now);
        },
        [this, &device](const std::expected<void, PairingRefusal>& left) {
            if (!left) return;
            coverage_.note(Met::departures);
            device.unpair();
        });
}

void PairingActs::releasePartner(SimDevice& device) {
    if (isBusy_ || device.needsToken()) return;
    ask<void>(
        device,
        [&device](PairingService& service, Store& store, const Members& members, Instant now) {
            const auto* record = recordOf(members, device);
            if (record == nullptr) return refusal<void>("unauthorized");
            return service.releasePartner(store, device.token()->coupleId, *record, now);
        },
        [](const std::expected<void, PairingRefusal>&) {});
}

} // namespace lumaro::simulation
