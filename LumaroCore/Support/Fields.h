// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace lumaro {

/// One stored field of a value type: its JSON key and the member that holds it.
///
/// A type lists its fields once, in wire order, in a static `fields()`; reading, writing and hashing follow that list.
/// A `std::optional` member may be absent or null when read and is left out when written; every other is required.
template <std::size_t N, class Owner, class T>
struct Field {
    /// The key as it is written: in quotes, with its colon.
    std::array<char, N + 2> written{};
    T Owner::* member;

    consteval Field(const char (&key)[N], T Owner::* which) : member(which) {
        written[0] = '"';
        for (std::size_t i = 0; i + 1 < N; ++i) written[i + 1] = key[i];
        written[N] = '"';
        written[N + 1] = ':';
    }

    constexpr std::string_view key() const { return {written.data() + 1, N - 1}; }
};

/// A field that takes `fallback` when it is absent or null on reading; it is always written.
template <std::size_t N, class Owner, class T>
struct FieldOr : Field<N, Owner, T> {
    T fallback;

    consteval FieldOr(const char (&key)[N], T Owner::* which, T otherwise)
        : Field<N, Owner, T>(key, which), fallback(otherwise) {}
};

/// A flag: false when it is absent or null on reading, and left out unless it is set.
template <std::size_t N, class Owner>
struct FieldIfSet : FieldOr<N, Owner, bool> {
    consteval FieldIfSet(const char (&key)[N], bool Owner::* which) : FieldOr<N, Owner, bool>(key, which, false) {}
};

template <class Field>
concept IsFlag = requires(Field field) { []<std::size_t N, class Owner>(const FieldIfSet<N, Owner>&) {}(field); };

/// A `std::optional` field that is absent as well when what is there is no value that this version knows: a value of
/// tomorrow costs its field, not what holds it. Text that is not JSON is an error here too.
template <std::size_t N, class Owner, class T>
struct FieldIfKnown : Field<N, Owner, T> {
    static constexpr bool readsIfKnown = true;

    consteval FieldIfKnown(const char (&key)[N], T Owner::* which) : Field<N, Owner, T>(key, which) {}
};

template <class T>
concept HasFields = requires { T::fields(); };

/// A type whose JSON is its fields and nothing more. A type with `fields()` whose JSON has more to it says
/// `hasOwnJson`, so that a file which does not see its `readJson` and `writeJson` does not compile, rather than reading
/// and writing less.
template <class T>
concept IsFieldsAlone = HasFields<T> && !requires { T::hasOwnJson; };

} // namespace lumaro
