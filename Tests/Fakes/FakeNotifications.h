// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/NotificationCenter.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumaro {

/// Keeps what was posted. The question about the permission that was asked last is answered when the test says so, and
/// while whoever asked still waits.
class FakeNotifications final : public NotificationCenter {
public:
    void post(LocalNotification notification) override { posted.push_back(std::move(notification)); }
    void withdraw(std::string_view about) override { withdrawn.emplace_back(about); }
    void onAnswer(Listener listener) override { listener_ = std::move(listener); }

    /// The person does that with what was posted about it.
    void tap(NotificationAnswer answer) const {
        if (listener_) listener_(answer);
    }
    [[nodiscard]] std::unique_ptr<Question> permission(Answer then) override { return ask(std::move(then)); }
    [[nodiscard]] std::unique_ptr<Question> askPermission(Answer then) override { return ask(std::move(then)); }

    void answer(NotificationPermission permission) {
        if (const auto asked = asked_.lock()) std::exchange(*asked, nullptr)(permission);
    }

    std::vector<LocalNotification> posted;
    std::vector<std::string> withdrawn;

private:
    struct Asked final : Question {
        std::shared_ptr<Answer> then;
    };

    std::unique_ptr<Question> ask(Answer then) {
        auto asked = std::make_unique<Asked>();
        asked->then = std::make_shared<Answer>(std::move(then));
        asked_ = asked->then;
        return asked;
    }

    std::weak_ptr<Answer> asked_;
    Listener listener_;
};

} // namespace lumaro
