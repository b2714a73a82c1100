// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Pairing/PairingService.h"

#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Unicode.h"
#include "LumaroRoom/Pairing/Secrets.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

constexpr std::size_t publicIdLength = 16;
constexpr std::size_t secretLength = 32;

const PairingRefusal badName{.status = 400, .code = "bad_name", .message = "This cannot be a name."};
const PairingRefusal badDevice{.status = 400, .code = "bad_device", .message = "This cannot be a device's id."};
const PairingRefusal tooManyDevices{
    .status = 409, .code = "too_many_devices", .message = "There are as many devices on this board as it takes."};
const PairingRefusal noCode{
    .status = 503, .code = "unavailable", .message = "There is no code to be had. Try again in a moment."};
const PairingRefusal notFound{.status = 404, .code = "not_found", .message = "There is no such invite."};
const PairingRefusal linkNotFound{.status = 404, .code = "invite_not_found", .message = "There is no such invite."};
const PairingRefusal linkExpired{.status = 410, .code = "invite_expired", .message = "This invite was replaced."};
const PairingRefusal codeNotFound{.status = 404, .code = "code_not_found", .message = "There is no such code."};
const PairingRefusal codeUsed{.status = 410, .code = "code_used", .message = "This code has been used."};
const PairingRefusal codeExpired{.status = 410, .code = "code_expired", .message = "This code has expired."};
const PairingRefusal rateLimited{
    .status = 429, .code = "rate_limited", .message = "Too many wrong codes. Try again in a few minutes."};

template <class T>
PairingResult<T> refused(PairingRefusal refusal) {
    return std::expected<T, PairingRefusal>{std::unexpected(std::move(refusal))};
}

bool isControl(char32_t character) {
    return character < 0x20 || (character >= 0x7f && character < 0xa0);
}

// The text without space around it; none when it is too long, not UTF-8, or holds what is no text.
std::optional<std::string> cleaned(std::string_view text, std::size_t maxBytes) {
    text = trimmed(text);
    if (text.size() > maxBytes) return std::nullopt;
    for (auto rest = text; !rest.empty();) {
        const auto character = takeCharacter(rest);
        if (!character || isControl(*character)) return std::nullopt;
    }
    return std::string{text};
}

std::string lowered(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c; });
    return text;
}

// Both people are on the board: who it is, most likely.
PartnerID suggestion(const SlotNames& names, std::string_view name, PartnerID inviter) {
    for (const auto slot : {PartnerID::a, PartnerID::b}) {
        const auto& known = names.of(slot);
        if (known && !name.empty() && lowered(*known) == lowered(std::string{name})) return slot;
    }
    return other(inviter);
}

struct Seating {
    PartnerID slot = PartnerID::a;
    JoinStatus status = JoinStatus::joined;
};

std::expected<Seating, PairingRefusal> seatingFor(const Members& members, const PairingService::Person& joiner,
                                                  PartnerID inviter) {
    if (const auto* device = members.findDevice(joiner.deviceId)) return Seating{device->slot, JoinStatus::already};
    const auto paired = members.paired();
    if (joiner.slot) {
        return Seating{*joiner.slot, paired.contains(*joiner.slot) ? JoinStatus::rejoined : JoinStatus::joined};
    }
    for (const auto slot : {other(inviter), inviter}) {
        if (!paired.contains(slot)) return Seating{slot, JoinStatus::joined};
    }
    return std::unexpected(PairingRefusal{.status = 409,
                                          .code = "choose_person",
                                          .message = "Both people are on this board: which one is this?",
                                          .names = members.names,
                                          .suggested = suggestion(members.names, joiner.name, inviter)});
}

std::optional<PairingRefusal> faultOf(const std::optional<LinkRecord>& link, Instant now) {
    if (!link) return linkNotFound;
    if (link->isReplaced || link->expiresAt <= now) return linkExpired;
    return std::nullopt;
}

std::optional<PairingRefusal> faultOf(const std::optional<CodeRecord>& code, Instant now) {
    if (!code) return codeNotFound;
    if (code->isUsed) return codeUsed;
    if (code->expiresAt <= now) return codeExpired;
    return std::nullopt;
}

} // namespace

PairingService::PairingService(std::string publicURL, RandomSource& random, Limits limits)
    : publicURL_(std::move(publicURL)), random_(random), limits_(limits) {
    while (publicURL_.ends_with('/')) publicURL_.pop_back();
}

// What the calls share

std::expected<PairingService::Person, PairingRefusal> PairingService::checked(const Person& person) const {
    auto deviceId = cleaned(person.deviceId, limits_.maxDeviceIdBytes);
    if (!deviceId || deviceId->empty()) return std::unexpected(badDevice);
    auto name = cleaned(person.name, limits_.maxNameBytes);
    if (!name) return std::unexpected(badName);
    return Person{.deviceId = std::move(*deviceId), .name = std::move(*name), .slot = person.slot};
}

PairingResult<void> PairingService::noteName(Store& store, std::string_view coupleId, PartnerID slot,
                                             std::string_view name) const {
    auto known = cleaned(name, limits_.maxNameBytes);
    if (!known) return refused<void>(badName);
    if (known->empty()) return {};
    if (auto set = store.setName(coupleId, slot, std::move(known)); !set)
        return std::unexpected(std::move(set.error()));
    return {};
}

// Answers with the device's token, which is kept nowhere.
StoreResult<std::string> PairingService::admit(Store& store, std::string_view coupleId, const Person& person,
                                               PartnerID slot) {
    auto token = std::string{CoupleToken::prefix} + "." + std::string{coupleId} + "." + std::string{nameOf(slot)} +
                 "." + randomText(random_, secretLength);
    auto done = store.putDevice(coupleId, {.deviceId = person.deviceId, .slot = slot, .token = sha256(token)});
    if (done && !person.name.empty()) done = store.setName(coupleId, slot, person.name);
    if (!done) return std::unexpected(std::move(done.error()));
    return token;
}

StoreResult<Invite> PairingService::invite(Store& store, std::string_view coupleId, PartnerID inviter, Instant now) {
    auto link = store.currentLink(coupleId, now);
    if (!link) return std::unexpected(std::move(link.error()));
    if (!*link) {
        *link = LinkRecord{.inviteId = randomText(random_, publicIdLength),
                           .coupleId = std::string{coupleId},
                           .inviter = inviter,
                           .expiresAt = saturatingAdd(now, limits_.linkLifetime)};
        if (auto put = store.putLink(**link); !put) return std::unexpected(std::move(put.error()));
    }
    const auto& id = (*link)->inviteId;
    return Invite{.inviteId = id, .link = publicURL_ + "/for/" + id, .expiresAt = (*link)->expiresAt};
}

// None when all the digits tried belong to codes that are alive.
StoreResult<std::optional<CodeRecord>> PairingService::freshCode(Store& store, std::string_view coupleId,
                                                                 PartnerID inviter, Instant now) {
    constexpr int tries = 100;
    for (int i = 0; i < tries; ++i) {
        CodeRecord code{.code = randomCode(random_),
                        .coupleId = std::string{coupleId},
                        .inviter = inviter,
                        .expiresAt = saturatingAdd(now, limits_.codeLifetime)};
        const auto put = store.putCode(code, now);
        if (!put) return std::unexpected(put.error());
        if (*put) return code;
    }
    return std::nullopt;
}

// Every link and code of the couple. A new code ends its others, and is used up at once.
PairingResult<void> PairingService::endWaysIn(Store& store, std::string_view coupleId, PartnerID inviter, Instant now) {
    const auto last = freshCode(store, coupleId, inviter, now);
    if (!last) return std::unexpected(last.error());
    if (!*last) return refused<void>(noCode);
    auto done = store.useCode((*last)->code);
    if (done) done = store.replaceLinks(coupleId);
    if (!done) return std::unexpected(std::move(done.error()));
    return {};
}

// Ways in

PairingResult<CreatedCouple> PairingService::createCouple(Store& store, const Person& person, Instant now) {
    const auto founder = checked(person);
    if (!founder) return refused<CreatedCouple>(founder.error());
    const auto coupleId = randomText(random_, publicIdLength);
    const auto created = store.createCouple({.coupleId = coupleId, .createdAt = now, .emptySince = {}});
    if (!created) return std::unexpected(created.error());
    auto token = admit(store, coupleId, *founder, PartnerID::a);
    if (!token) return std::unexpected(std::move(token.error()));
    auto link = invite(store, coupleId, PartnerID::a, now);
    if (!link) return std::unexpected(std::move(link.error()));
    return CreatedCouple{.coupleId = coupleId, .token = std::move(*token), .invite = std::move(*link)};
}

PairingResult<Joined> PairingService::joinByCode(Store& store, std::string_view code, const Person& person,
                                                 std::string_view origin, Instant now) {
    const auto joiner = checked(person);
    if (!joiner) return refused<Joined>(joiner.error());
    const auto wrong = store.wrongCodes(origin, saturatingAdd(now, -limits_.wrongCodeWindow));
    if (!wrong) return std::unexpected(wrong.error());
    const bool isOver = wrong->ofOrigin >= limits_.wrongCodesPerOrigin || wrong->ofAll >= limits_.wrongCodesInAll;
    if (isOver) return refused<Joined>(rateLimited);
    const auto record = store.code(code);
    if (!record) return std::unexpected(record.error());
    // The same calls on the store whatever is wrong with the code.
    if (auto fault = faultOf(*record, now)) {
        if (auto added = store.addWrongCode(origin, now); !added) return std::unexpected(std::move(added.error()));
        return refused<Joined>(std::move(*fault));
    }
    const Way way{.coupleId = (*record)->coupleId, .inviter = (*record)->inviter};
    auto joined = join(store, way, *joiner, codeNotFound);
    if (!joined || !*joined) return joined;
    if (auto used = store.useCode(code); !used) return std::unexpected(std::move(used.error()));
    return joined;
}

PairingResult<Joined> PairingService::joinByLink(Store& store, std::string_view inviteId, const Person& person,
                                                 Instant now) {
    const auto joiner = checked(person);
    if (!joiner) return refused<Joined>(joiner.error());
    const auto record = store.link(inviteId);
    if (!record) return std::unexpected(record.error());
    if (auto fault = faultOf(*record, now)) return refused<Joined>(std::move(*fault));
    const Way way{.coupleId = (*record)->coupleId, .inviter = (*record)->inviter};
    return join(store, way, *joiner, linkNotFound);
}

PairingResult<Joined> PairingService::join(Store& store, const Way& way, const Person& joiner,
                                           const PairingRefusal& coupleGone) {
    const auto couple = store.couple(way.coupleId);
    if (!couple) return std::unexpected(couple.error());
    if (!*couple) return refused<Joined>(coupleGone);
    const auto members = store.members(way.coupleId);
    if (!members) return std::unexpected(members.error());
    const auto seating = seatingFor(*members, joiner, way.inviter);
    if (!seating) return refused<Joined>(seating.error());
    const bool isNew = seating->status != JoinStatus::already;
    if (isNew && members->devices.size() >= limits_.devicesPerCouple) return refused<Joined>(tooManyDevices);
    auto token = admit(store, way.coupleId, joiner, seating->slot);
    if (!token) return std::unexpected(std::move(token.error()));
    return Joined{.token = std::move(*token),
                  .coupleId = way.coupleId,
                  .partnerName = members->names.of(other(seating->slot)).value_or(""),
                  .slot = seating->slot,
                  .status = seating->status};
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a call like the others
PairingResult<Handoff> PairingService::handoff(Store& store, const std::optional<std::string>& inviteId, Instant now) {
    if (!inviteId) return refused<Handoff>(notFound);
    const auto link = store.link(*inviteId);
    if (!link) return std::unexpected(link.error());
    if (faultOf(*link, now)) return refused<Handoff>(notFound);
    const auto members = store.members((*link)->coupleId);
    if (!members) return std::unexpected(members.error());
    return Handoff{*inviteId, members->names.of((*link)->inviter)};
}

// Calls on a couple

PairingResult<Invite> PairingService::mintLink(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                               std::string_view name, Instant now) {
    const auto named = noteName(store, coupleId, by.slot, name);
    if (!named) return std::unexpected(named.error());
    if (!*named) return refused<Invite>(named->error());
    return invite(store, coupleId, by.slot, now);
}

PairingResult<void> PairingService::resetLinks(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                               Instant now) {
    return endWaysIn(store, coupleId, by.slot, now);
}

PairingResult<ShareCode> PairingService::createCode(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                                    std::string_view name, Instant now) {
    if (!cleaned(name, limits_.maxNameBytes)) return refused<ShareCode>(badName);
    const auto code = freshCode(store, coupleId, by.slot, now);
    if (!code) return std::unexpected(code.error());
    if (!*code) return refused<ShareCode>(noCode);
    if (const auto named = noteName(store, coupleId, by.slot, name); !named) return std::unexpected(named.error());
    return ShareCode{.code = (*code)->code, .expiresAt = (*code)->expiresAt, .slot = other(by.slot)};
}

PairingResult<void> PairingService::setName(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                            std::string_view name) const {
    auto known = cleaned(name, limits_.maxNameBytes);
    if (!known) return refused<void>(badName);
    if (known->empty()) known.reset();
    if (auto set = store.setName(coupleId, by.slot, std::move(known)); !set) {
        return std::unexpected(std::move(set.error()));
    }
    return {};
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a call like the others
PairingResult<void> PairingService::leave(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                          Instant now) {
    const auto members = store.members(coupleId);
    if (!members) return std::unexpected(members.error());
    const auto isOther = [&](const DeviceRecord& device) {
        return device.slot == by.slot && device.deviceId != by.deviceId;
    };
    auto done = store.removeDevice(coupleId, by.deviceId, now);
    if (done && std::ranges::none_of(members->devices, isOther)) done = store.setName(coupleId, by.slot, std::nullopt);
    if (!done) return std::unexpected(std::move(done.error()));
    return {};
}

PairingResult<void> PairingService::releasePartner(Store& store, std::string_view coupleId, const DeviceRecord& by,
                                                   Instant now) {
    const auto members = store.members(coupleId);
    if (!members) return std::unexpected(members.error());
    if (auto ended = endWaysIn(store, coupleId, by.slot, now); !ended || !*ended) return ended;
    auto done = store.setName(coupleId, other(by.slot), std::nullopt);
    for (const auto& device : members->devices) {
        if (done && device.slot != by.slot) done = store.removeDevice(coupleId, device.deviceId, now);
    }
    if (!done) return std::unexpected(std::move(done.error()));
    return {};
}

} // namespace lumaro
