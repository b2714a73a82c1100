// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fields.h"

#include <chrono>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <variant>
#include <vector>

namespace lumaro {

/// Folds the stored fields of a value into one hash that agrees with its equality.
class Hasher {
public:
    template <class T>
        requires(std::integral<T> || std::is_enum_v<T>)
    void add(T value) {
        mix(static_cast<std::uint64_t>(value));
    }
    void add(double value) { mix(std::hash<double>{}(value)); } // gives 0.0 and -0.0 one hash, as == has it
    void add(const std::string& value) { mix(std::hash<std::string>{}(value)); }
    template <class Clock, class Duration>
    void add(std::chrono::time_point<Clock, Duration> value) {
        mix(static_cast<std::uint64_t>(value.time_since_epoch().count()));
    }
    void add(std::nullptr_t) { mix(0); }
    template <class T>
    void add(const std::optional<T>& value) {
        add(value.has_value());
        if (value) add(*value);
    }
    template <class T>
    void add(const std::vector<T>& values) {
        add(values.size());
        for (const auto& value : values) add(value);
    }
    template <class K, class V>
    void add(const std::map<K, V>& entries) {
        add(entries.size());
        for (const auto& [key, value] : entries) {
            add(key);
            add(value);
        }
    }
    template <class... T>
    void add(const std::variant<T...>& value) {
        add(value.index());
        std::visit([this](const auto& alternative) { this->add(alternative); }, value);
    }
    template <HasFields T>
        requires(!requires(const T& value, Hasher& hasher) { value.hashInto(hasher); })
    void add(const T& value) {
        std::apply([&](const auto&... field) { (add(value.*field.member), ...); }, T::fields());
    }
    template <class T>
        requires requires(const T& value, Hasher& hasher) { value.hashInto(hasher); }
    void add(const T& value) {
        value.hashInto(*this);
    }

    std::size_t result() const { return static_cast<std::size_t>(state_ ^ (state_ >> 32)); }

private:
    // A multiply-and-rotate mix; the constant is 2^64 divided by the golden ratio.
    void mix(std::uint64_t value) {
        state_ = (state_ ^ value) * 0x9e3779b97f4a7c15ULL;
        state_ = (state_ << 27) | (state_ >> 37);
    }

    std::uint64_t state_ = 0;
};

/// A type whose hash covers all its stored fields: it lists them in `fields()`, or folds them in itself with
/// `hashInto`.
template <class T>
concept HashedByFields = HasFields<T> || requires(const T& value, Hasher& hasher) { value.hashInto(hasher); };

} // namespace lumaro

template <lumaro::HashedByFields T>
struct std::hash<T> {
    std::size_t operator()(const T& value) const {
        lumaro::Hasher hasher;
        hasher.add(value);
        return hasher.result();
    }
};
