// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// What a notification offers beside being opened.
struct NotificationAction {
    std::string name; ///< comes back with the answer
    std::string label;

    bool operator==(const NotificationAction&) const = default;
};

/// Plain texts, and a picture as the path of a file of this computer.
struct LocalNotification {
    std::string title;
    std::string body;
    std::optional<std::string> picturePath;
    /// What it is about: comes back with the answer, and a later one about the same takes its place. Empty: nothing is
    /// heard of it, and nothing takes its place.
    std::string about{};
    std::vector<NotificationAction> actions{};

    bool operator==(const LocalNotification&) const = default;
};

/// What a person did with a notification.
struct NotificationAnswer {
    enum class Kind : std::uint8_t {
        opened, ///< they want to see what it is about
        acted,
        dismissed,
    };
    Kind kind = Kind::opened;
    std::string about;
    std::string action{}; ///< its name, of `acted`

    bool operator==(const NotificationAnswer&) const = default;
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
    /// Actions are offered where the desktop can.
    virtual void post(LocalNotification notification) = 0;
    /// The person has seen what it is about: it is shown no more.
    virtual void withdraw(std::string_view about) = 0;
    /// Calls the listener with each answer to what was posted with something that it is about, never from within a call
    /// of this; null: with none any more.
    using Listener = std::function<void(const NotificationAnswer&)>;
    virtual void onAnswer(Listener listener) = 0;

    /// Calls `then` once, never from within this call.
    [[nodiscard]] virtual std::unique_ptr<Question> permission(Answer then) = 0;
    /// The same, after asking the person where nobody has yet.
    [[nodiscard]] virtual std::unique_ptr<Question> askPermission(Answer then) = 0;
};

} // namespace lumaro
