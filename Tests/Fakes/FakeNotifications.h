// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/NotificationCenter.h"

#include <memory>
#include <utility>
#include <vector>

namespace lumaro {

/// Keeps what was posted. Questions about the permission are never answered.
class FakeNotifications final : public NotificationCenter {
public:
    void post(LocalNotification notification) override { posted.push_back(std::move(notification)); }
    [[nodiscard]] std::unique_ptr<Question> permission(Answer) override { return std::make_unique<Question>(); }
    [[nodiscard]] std::unique_ptr<Question> askPermission(Answer) override { return std::make_unique<Question>(); }

    std::vector<LocalNotification> posted;
};

} // namespace lumaro
