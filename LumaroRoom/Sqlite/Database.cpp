// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/Database.h"

#include "LumaroCore/Support/Fatal.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

StoreFault faultOf(int code) {
    switch (code & 0xff) {
    case SQLITE_FULL: return StoreFault::noSpace;
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return StoreFault::inUse;
    case SQLITE_CORRUPT: return StoreFault::damaged;
    case SQLITE_NOTADB: return StoreFault::notOurs;
    case SQLITE_CANTOPEN: return StoreFault::notFound;
    case SQLITE_PERM:
    case SQLITE_READONLY: return StoreFault::denied;
    default: return StoreFault::other;
    }
}

StoreError errorOf(sqlite3* handle) {
    return {sqlite3_errmsg(handle), faultOf(sqlite3_extended_errcode(handle))};
}

} // namespace

Rows::Rows(Rows&& other) noexcept
    : statement_(std::exchange(other.statement_, nullptr)), parameter_(other.parameter_), column_(other.column_),
      fault_(std::move(other.fault_)) {
}

Rows::~Rows() {
    if (statement_ != nullptr) sqlite3_reset(statement_);
}

void Rows::check(int code) {
    if (code != SQLITE_OK && !fault_) fault_ = errorOf(sqlite3_db_handle(statement_));
}

void Rows::fail(std::string_view message) {
    if (!fault_)
        fault_ = StoreError{"column " + std::to_string(column_) + ": " + std::string{message}, StoreFault::damaged};
}

void Rows::bind(std::int64_t value) {
    if (statement_ != nullptr) check(sqlite3_bind_int64(statement_, ++parameter_, value));
}

void Rows::bind(std::string_view text) {
    if (statement_ == nullptr) return;
    check(sqlite3_bind_text64(statement_, ++parameter_, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Rows::bind(Blob blob) {
    if (statement_ == nullptr) return;
    // A null pointer would bind NULL.
    const auto* bytes = blob.bytes.empty() ? "" : blob.bytes.data();
    check(sqlite3_bind_blob64(statement_, ++parameter_, bytes, blob.bytes.size(), SQLITE_STATIC));
}

void Rows::bind(std::span<const std::uint8_t> bytes) {
    if (statement_ != nullptr) {
        check(sqlite3_bind_blob64(statement_, ++parameter_, bytes.data(), bytes.size(), SQLITE_STATIC));
    }
}

void Rows::bind(std::nullopt_t) {
    if (statement_ != nullptr) check(sqlite3_bind_null(statement_, ++parameter_));
}

bool Rows::next() {
    if (fault_) return false;
    column_ = 0;
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) check(code);
    return code == SQLITE_ROW;
}

StoreResult<void> Rows::ended() const {
    if (fault_) return std::unexpected(*fault_);
    return {};
}

bool Rows::isNull() const {
    return sqlite3_column_type(statement_, column_) == SQLITE_NULL;
}

Rows& Rows::operator>>(std::int64_t& value) {
    value = sqlite3_column_int64(statement_, column_++);
    return *this;
}

Rows& Rows::operator>>(bool& value) {
    value = sqlite3_column_int64(statement_, column_++) != 0;
    return *this;
}

Rows& Rows::operator>>(Instant& value) {
    value = Instant{Microseconds{sqlite3_column_int64(statement_, column_++)}};
    return *this;
}

Rows& Rows::operator>>(Blob& blob) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column_));
    blob.bytes = {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column_++))};
    return *this;
}

// The bytes of a text, as they stand.
Rows& Rows::operator>>(std::string_view& text) {
    Blob blob;
    *this >> blob;
    text = blob.bytes;
    return *this;
}

Rows& Rows::operator>>(std::string& text) {
    std::string_view view;
    *this >> view;
    text = view;
    return *this;
}

Rows& Rows::readBytes(std::span<std::uint8_t> bytes) {
    Blob blob;
    *this >> blob;
    if (blob.bytes.size() == bytes.size()) {
        std::ranges::copy(blob.bytes, bytes.begin());
    } else {
        fail("a blob of the wrong size");
    }
    return *this;
}

void Database::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

void Database::Close::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

StoreResult<Database> Database::open(const std::string& path, Access access) {
    sqlite3* raw = nullptr;
    // Readers too: they share the log of the writer through files beside the database.
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const int code = sqlite3_open_v2(path.c_str(), &raw, flags, nullptr);
    std::unique_ptr<sqlite3, Close> handle{raw};
    if (code != SQLITE_OK) {
        return std::unexpected(StoreError{path + ": " + sqlite3_errstr(code), faultOf(code)});
    }
    Database database{std::move(handle)};
    // A reader in another process may hold a lock for a moment.
    sqlite3_busy_timeout(raw, 5000);
    const auto* mode = access == Access::read ? "PRAGMA query_only = ON" : "PRAGMA foreign_keys = ON";
    if (auto set = database.execute(mode); !set) return std::unexpected(std::move(set.error()));
    return database;
}

StoreResult<void> Database::execute(const std::string& statements) {
    const int code = sqlite3_exec(handle_.get(), statements.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) return std::unexpected(errorOf(handle_.get()));
    return {};
}

Rows Database::prepared(Sql sql) {
    auto& statement = statements_[sql.text];
    if (!statement) {
        sqlite3_stmt* raw = nullptr;
        const int code = sqlite3_prepare_v3(handle_.get(), sql.text, -1, SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
        statement.reset(raw);
        if (code != SQLITE_OK) return Rows{errorOf(handle_.get())};
    }
    if (sqlite3_stmt_busy(statement.get()) != 0) fatal("a statement is run within itself");
    return Rows{*statement};
}

StoreResult<void> Database::finish(Rows rows) {
    while (rows.next()) {
    }
    return rows.ended();
}

std::int64_t Database::rowsChanged() const {
    return sqlite3_changes64(handle_.get());
}

bool Database::isInTransaction() const {
    return sqlite3_get_autocommit(handle_.get()) == 0;
}

} // namespace lumaro
