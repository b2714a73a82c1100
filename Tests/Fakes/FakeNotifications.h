// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/NotificationCenter.h"

#include <cstddef>
#include <deque>
#include <utility>
#include <vector>

namespace lumaro {

/// Keeps what was posted. Questions wait until the test answers them. Outlives its questions.
class FakeNotifications final : public NotificationCenter {
public:
    void post(LocalNotification notification) override { posted.push_back(std::move(notification)); }

    [[nodiscard]] std::unique_ptr<Question> permission(Answer then) override { return put(std::move(then)); }
    [[nodiscard]] std::unique_ptr<Question> askPermission(Answer then) override {
        ++asked;
        return put(std::move(then));
    }

    /// Answers the oldest question that waits; false when none does.
    bool answer(NotificationPermission permission) {
        while (!open_.empty()) {
            auto question = std::move(open_.front());
            open_.pop_front();
            if (!*question.isWanted) continue;
            question.then(permission);
            return true;
        }
        return false;
    }

    std::vector<LocalNotification> posted;
    /// How often the person was asked.
    int asked = 0;

private:
    struct Open {
        Answer then;
        std::shared_ptr<bool> isWanted;
    };
    class Handle final : public Question {
    public:
        explicit Handle(std::shared_ptr<bool> isWanted) : isWanted_(std::move(isWanted)) {}
        ~Handle() override { *isWanted_ = false; }

    private:
        std::shared_ptr<bool> isWanted_;
    };

    std::unique_ptr<Question> put(Answer then) {
        auto isWanted = std::make_shared<bool>(true);
        open_.push_back({std::move(then), isWanted});
        return std::make_unique<Handle>(std::move(isWanted));
    }

    std::deque<Open> open_;
};

} // namespace lumaro
