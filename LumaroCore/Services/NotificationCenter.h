// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// Plain texts, and a picture as the path of a file of this computer.
struct LocalNotification {
    std::string title;
    std::string body;
    std::optional<std::string> picturePath;

    bool operator==(const LocalNotification&) const = default;
};

enum class NotificationPermission : std::uint8_t {
    notDetermined, ///< nobody has been asked yet
    denied,        ///< the person will have none, or nothing on this computer shows any
    authorized,
};

constexpr std::array<std::string_view, 3> namesOf(NotificationPermission) {
    return {"notDetermined", "denied", "authorized"};
}

/// Shows people notifications. Used on the main thread, which it never holds up.
class NotificationCenter {
public:
    /// A question under way. Dropping it means that its `then` is not called any more.
    class Question {
    public:
        Question() = default;
        Question(const Question&) = delete;
        Question& operator=(const Question&) = delete;
        virtual ~Question() = default;
    };
    using Answer = std::move_only_function<void(NotificationPermission)>;

    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;
    virtual ~NotificationCenter() = default;

    /// Shows it, or does nothing where none can be shown. Those posted one after the other are shown in that order.
    virtual void post(LocalNotification notification) = 0;

    /// Calls `then` once, never from within this call.
    [[nodiscard]] virtual std::unique_ptr<Question> permission(Answer then) = 0;
    /// The same, after asking the person where nobody has yet.
    [[nodiscard]] virtual std::unique_ptr<Question> askPermission(Answer then) = 0;
};

} // namespace lumaro
