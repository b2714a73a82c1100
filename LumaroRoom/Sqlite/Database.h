// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/UUID.h"
#include "LumaroRoom/Store/Store.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

namespace lumaro {

/// The text of one statement: a literal, by whose address the prepared statement is found again.
struct Sql {
    consteval Sql(const char* literal) : text(literal) {} // NOLINT(google-explicit-constructor)
    const char* text;
};

/// A value that is bound or read as a blob.
struct Blob {
    std::string_view bytes;
};

/// A statement that is being run. It keeps its first fault: `next` is then false, and what is read means nothing.
class Rows {
public:
    explicit Rows(sqlite3_stmt& statement) : statement_(&statement) {}
    explicit Rows(StoreError fault) : fault_(std::move(fault)) {}
    Rows(Rows&& other) noexcept;
    Rows& operator=(Rows&&) = delete;
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;
    ~Rows();

    /// Binds the next parameter; what it refers to outlives the rows.
    void bind(std::int64_t value);
    void bind(std::string_view text);
    void bind(Blob blob);
    void bind(std::nullopt_t);
    void bind(bool value) { bind(std::int64_t{value}); }
    void bind(Instant value) { bind(std::int64_t{value.time_since_epoch().count()}); }
    void bind(const std::string& text) { bind(std::string_view{text}); }
    void bind(std::span<const std::uint8_t> bytes);
    void bind(const UUID& id) { bind(std::span<const std::uint8_t>{id.bytes}); }
    template <NamedEnum E>
    void bind(E value) {
        bind(nameOf(value));
    }
    template <class T>
    void bind(const std::optional<T>& value) {
        value ? bind(*value) : bind(std::nullopt);
    }

    /// Goes to the next row; false when there is none.
    bool next();
    /// How it went, once `next` is false.
    StoreResult<void> ended() const;

    /// The row's columns from the left, one after the other. A view is valid until `next`.
    Rows& operator>>(std::int64_t& value);
    Rows& operator>>(bool& value);
    Rows& operator>>(Instant& value);
    Rows& operator>>(std::string_view& text);
    Rows& operator>>(std::string& text);
    Rows& operator>>(Blob& blob);
    Rows& operator>>(UUID& id) { return readBytes(id.bytes); }
    template <std::size_t size>
    Rows& operator>>(std::array<std::uint8_t, size>& bytes) {
        return readBytes(bytes);
    }
    template <NamedEnum E>
    Rows& operator>>(E& value) {
        std::string_view name;
        *this >> name;
        const auto named = fromName<E>(name);
        if (named) {
            value = *named;
        } else {
            fail("unknown name");
        }
        return *this;
    }
    template <class T>
    Rows& operator>>(std::optional<T>& value) {
        if (isNull()) {
            ++column_;
            value.reset();
            return *this;
        }
        return *this >> value.emplace();
    }

    /// Passes over the next columns of the row.
    void skip(int columns) { column_ += columns; }

private:
    Rows& readBytes(std::span<std::uint8_t> bytes);
    bool isNull() const;
    void check(int code);
    void fail(std::string_view message);

    sqlite3_stmt* statement_ = nullptr;
    int parameter_ = 0;
    int column_ = 0;
    std::optional<StoreError> fault_;
};

/// An open SQLite database with its prepared statements. One thread.
class Database {
public:
    enum class Access : std::uint8_t { read, write };

    /// An empty file is an empty database.
    [[nodiscard]] static StoreResult<Database> open(const std::string& path, Access access);

    /// Statements without parameters or rows; stops at the first that fails.
    [[nodiscard]] StoreResult<void> execute(const std::string& statements);

    /// What it refers to outlives the rows.
    template <class... Arguments>
    [[nodiscard]] Rows query(Sql sql, const Arguments&... arguments) {
        Rows rows = prepared(sql);
        (rows.bind(arguments), ...);
        return rows;
    }
    /// Runs a statement to its end.
    template <class... Arguments>
    [[nodiscard]] StoreResult<void> run(Sql sql, const Arguments&... arguments) {
        return finish(query(sql, arguments...));
    }
    /// The same; the number of rows that it changed.
    template <class... Arguments>
    [[nodiscard]] StoreResult<std::int64_t> change(Sql sql, const Arguments&... arguments) {
        if (auto done = run(sql, arguments...); !done) return std::unexpected(std::move(done.error()));
        return rowsChanged();
    }
    /// The one value of a statement's first row; none when it has no row.
    template <class T, class... Arguments>
    [[nodiscard]] StoreResult<std::optional<T>> value(Sql sql, const Arguments&... arguments) {
        auto rows = query(sql, arguments...);
        std::optional<T> found;
        if (rows.next()) rows >> found.emplace();
        if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
        return found;
    }

    bool isInTransaction() const;

private:
    struct Close {
        void operator()(sqlite3* database) const;
        void operator()(sqlite3_stmt* statement) const;
    };

    explicit Database(std::unique_ptr<sqlite3, Close> handle) : handle_(std::move(handle)) {}
    Rows prepared(Sql sql);
    static StoreResult<void> finish(Rows rows);
    std::int64_t rowsChanged() const;

    std::unique_ptr<sqlite3, Close> handle_;
    std::unordered_map<const char*, std::unique_ptr<sqlite3_stmt, Close>> statements_;
};

} // namespace lumaro
