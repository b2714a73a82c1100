// SPDX-License-Identifier: Apache-2.0
// Couples, their devices, and the ways in.
#include "LumaroRoom/Sqlite/SqliteStore.h"

#include "LumaroCore/Support/Unicode.h"

#include <utility>

namespace lumaro {
namespace {

// What stands in the only row, read into `value`; none when there is no row.
template <class T>
StoreResult<std::optional<T>> only(Rows rows, void (*read)(Rows&, T&)) {
    std::optional<T> found;
    if (rows.next()) read(rows, found.emplace());
    if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
    return found;
}

void readLink(Rows& rows, LinkRecord& link) {
    rows >> link.inviteId >> link.coupleId >> link.inviter >> link.expiresAt >> link.isReplaced;
}

} // namespace

StoreResult<void> SqliteStore::createCouple(const CoupleRecord& couple) {
    return database_.run("INSERT INTO couples(id, created_at, empty_since, version, filed, background, updated_at) "
                         "VALUES(?1, ?2, ?3, 0, 0, ?4, ?2)",
                         couple.coupleId, couple.createdAt, couple.emptySince, BackgroundID{});
}

StoreResult<std::optional<CoupleRecord>> SqliteStore::couple(std::string_view coupleId) {
    auto rows = database_.query("SELECT id, created_at, empty_since FROM couples WHERE id = ?1", coupleId);
    return only<CoupleRecord>(std::move(rows), [](Rows& row, CoupleRecord& couple) {
        row >> couple.coupleId >> couple.createdAt >> couple.emptySince;
    });
}

StoreResult<Members> SqliteStore::members(std::string_view coupleId) {
    const auto couple = numberOf(coupleId);
    if (!couple) return std::unexpected(couple.error());
    Members members;
    if (!*couple) return members;
    auto rows = database_.query("SELECT name_a, name_b FROM couples WHERE num = ?1", **couple);
    if (rows.next()) rows >> members.names.a >> members.names.b;
    forgetUnreadable(members.names);
    auto done = rows.ended();
    if (done) done = loadDevices(**couple, members);
    if (!done) return std::unexpected(std::move(done.error()));
    return members;
}

// Only a hand in the file writes a name that is not UTF-8: no message can say it, so its slot counts as nameless.
void SqliteStore::forgetUnreadable(SlotNames& names) {
    for (auto* const name : {&names.a, &names.b}) {
        if (!*name || isUtf8(**name)) continue;
        name->reset();
        log_.write(LogLevel::error, "store", "a name is not UTF-8: it is kept, and left out");
    }
}

StoreResult<void> SqliteStore::loadDevices(std::int64_t couple, Members& members) {
    auto rows = database_.query("SELECT id, slot, token FROM devices WHERE couple = ?1 ORDER BY id", couple);
    while (rows.next()) {
        auto& device = members.devices.emplace_back();
        rows >> device.deviceId >> device.slot >> device.token;
    }
    return rows.ended();
}

StoreResult<void> SqliteStore::setName(std::string_view coupleId, PartnerID slot, std::optional<std::string> name) {
    return slot == PartnerID::a ? database_.run("UPDATE couples SET name_a = ?2 WHERE id = ?1", coupleId, name)
                                : database_.run("UPDATE couples SET name_b = ?2 WHERE id = ?1", coupleId, name);
}

StoreResult<void> SqliteStore::setLastSeen(std::string_view coupleId, PartnerID slot, Instant at) {
    return slot == PartnerID::a ? database_.run("UPDATE couples SET seen_a = ?2 WHERE id = ?1", coupleId, at)
                                : database_.run("UPDATE couples SET seen_b = ?2 WHERE id = ?1", coupleId, at);
}

StoreResult<LastSeen> SqliteStore::lastSeen(std::string_view coupleId) {
    auto rows = database_.query("SELECT seen_a, seen_b FROM couples WHERE id = ?1", coupleId);
    LastSeen seen;
    if (rows.next()) rows >> seen.a >> seen.b;
    if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
    return seen;
}

StoreResult<void> SqliteStore::putDevice(std::string_view coupleId, const DeviceRecord& device) {
    const auto couple = existing(coupleId);
    if (!couple) return std::unexpected(couple.error());
    auto done = database_.run("INSERT OR REPLACE INTO devices(couple, id, slot, token) VALUES(?1, ?2, ?3, ?4)", *couple,
                              device.deviceId, device.slot, device.token);
    if (done) done = database_.run("UPDATE couples SET empty_since = NULL WHERE num = ?1", *couple);
    return done;
}

StoreResult<void> SqliteStore::removeDevice(std::string_view coupleId, std::string_view deviceId, Instant at) {
    const auto couple = numberOf(coupleId);
    if (!couple) return std::unexpected(couple.error());
    if (!*couple) return {};
    const auto removed = database_.change("DELETE FROM devices WHERE couple = ?1 AND id = ?2", **couple, deviceId);
    if (!removed) return std::unexpected(removed.error());
    if (*removed == 0) return {};
    return database_.run(
        "UPDATE couples SET empty_since = ?2 WHERE num = ?1 AND NOT EXISTS (SELECT 1 FROM devices WHERE couple = ?1)",
        **couple, at);
}

StoreResult<void> SqliteStore::putLink(const LinkRecord& link) {
    const auto couple = existing(link.coupleId);
    if (!couple) return std::unexpected(couple.error());
    return database_.run(
        "INSERT OR REPLACE INTO links(id, couple, inviter, expires_at, is_replaced) VALUES(?1, ?2, ?3, ?4, ?5)",
        link.inviteId, *couple, link.inviter, link.expiresAt, link.isReplaced);
}

StoreResult<std::optional<LinkRecord>> SqliteStore::link(std::string_view inviteId) {
    return only(database_.query("SELECT links.id, couples.id, inviter, expires_at, is_replaced FROM links JOIN couples "
                                "ON num = couple WHERE links.id = ?1",
                                inviteId),
                readLink);
}

StoreResult<std::optional<LinkRecord>> SqliteStore::currentLink(std::string_view coupleId, Instant now) {
    return only(
        database_.query(
            "SELECT links.id, couples.id, inviter, expires_at, is_replaced FROM links JOIN couples ON num = couple "
            "WHERE couples.id = ?1 AND is_replaced = 0 AND expires_at > ?2 ORDER BY expires_at DESC, links.id LIMIT 1",
            coupleId, now),
        readLink);
}

StoreResult<void> SqliteStore::replaceLinks(std::string_view coupleId) {
    return database_.run("UPDATE links SET is_replaced = 1 WHERE couple = (SELECT num FROM couples WHERE id = ?1)",
                         coupleId);
}

StoreResult<bool> SqliteStore::putCode(const CodeRecord& code, Instant now) {
    const auto couple = existing(code.coupleId);
    if (!couple) return std::unexpected(couple.error());
    const auto taken = database_.value<std::int64_t>(
        "SELECT 1 FROM codes WHERE digits = ?1 AND couple <> ?2 AND is_used = 0 AND expires_at > ?3", code.code,
        *couple, now);
    if (!taken) return std::unexpected(taken.error());
    if (*taken) return false;
    auto done = database_.run("UPDATE codes SET is_used = 1 WHERE couple = ?1 AND is_used = 0", *couple);
    if (done) {
        done = database_.run(
            "INSERT OR REPLACE INTO codes(digits, couple, inviter, expires_at, is_used) VALUES(?1, ?2, ?3, ?4, ?5)",
            code.code, *couple, code.inviter, code.expiresAt, code.isUsed);
    }
    if (!done) return std::unexpected(done.error());
    return true;
}

StoreResult<std::optional<CodeRecord>> SqliteStore::code(std::string_view digits) {
    auto rows = database_.query("SELECT digits, couples.id, inviter, expires_at, is_used FROM codes JOIN couples ON "
                                "num = couple WHERE digits = ?1",
                                digits);
    return only<CodeRecord>(std::move(rows), [](Rows& row, CodeRecord& code) {
        row >> code.code >> code.coupleId >> code.inviter >> code.expiresAt >> code.isUsed;
    });
}

StoreResult<void> SqliteStore::useCode(std::string_view digits) {
    return database_.run("UPDATE codes SET is_used = 1 WHERE digits = ?1", digits);
}

StoreResult<void> SqliteStore::addWrongCode(std::string_view origin, Instant at) {
    return database_.run("INSERT INTO wrong_codes(origin, at) VALUES(?1, ?2)", origin, at);
}

StoreResult<Store::WrongCodes> SqliteStore::wrongCodes(std::string_view origin, Instant since) {
    auto rows = database_.query("SELECT (SELECT count(*) FROM wrong_codes WHERE origin = ?1 AND at >= ?2), (SELECT "
                                "count(*) FROM wrong_codes WHERE at >= ?2)",
                                origin, since);
    std::int64_t ofOrigin = 0;
    std::int64_t ofAll = 0;
    if (rows.next()) rows >> ofOrigin >> ofAll;
    if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
    return WrongCodes{static_cast<std::size_t>(ofOrigin), static_cast<std::size_t>(ofAll)};
}

} // namespace lumaro
