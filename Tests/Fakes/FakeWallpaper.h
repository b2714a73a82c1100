// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Computer/BoardWallpaper.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// A desktop whose wallpaper is what was set.
class FakeWallpaperDoor final : public WallpaperDoor {
public:
    bool isThere(WallpaperDesk) override { return offered; }
    [[nodiscard]] std::expected<WallpaperSettings, std::string> read(WallpaperDesk) override {
        if (failure) return std::unexpected(*failure);
        return settings;
    }
    [[nodiscard]] std::expected<void, std::string> write(WallpaperDesk, const WallpaperSettings& wanted) override {
        if (failure) return std::unexpected(*failure);
        for (const auto& [name, value] : wanted) settings[name] = value;
        ++writes;
        return {};
    }

    bool offered = true;
    WallpaperSettings settings{{"picture-uri", "'file:///home/ana/hills.jpg'"}, {"picture-options", std::nullopt}};
    std::optional<std::string> failure;
    int writes = 0;
};

/// Paints nothing, and says that it did when the test wants it.
class FakeBoardPainter final : public BoardPainter {
public:
    void paint(Order order, Painted then) override {
        orders.push_back(std::move(order));
        then_ = std::move(then);
    }
    void stop() override { then_ = nullptr; }

    /// The picture of the latest order is there.
    void finish() {
        if (!then_) return;
        const auto& order = orders.back();
        std::exchange(then_, nullptr)(std::vector<BoardPicture>{{"", order.folder + "/" + order.name + ".jpg"}});
    }
    bool isAsked() const { return static_cast<bool>(then_); }

    std::vector<Order> orders;

private:
    Painted then_;
};

} // namespace lumaro
