// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/WallpaperDoor.h"

#include <QDBusConnection>
#include <QString>

namespace lumaro {

/// The wallpapers of Linux's desktops: GNOME's, Cinnamon's and MATE's through GSettings, Xfce's through Xfconf on the
/// session's bus, and that of pcmanfm by its own command.
class DesktopWallpaper final : public WallpaperDoor {
public:
    explicit DesktopWallpaper(QDBusConnection bus = QDBusConnection::sessionBus()) : bus_(std::move(bus)) {}

    bool isThere(WallpaperDesk desk) override;
    [[nodiscard]] std::expected<WallpaperSettings, std::string> read(WallpaperDesk desk) override;
    [[nodiscard]] std::expected<void, std::string> write(WallpaperDesk desk,
                                                         const WallpaperSettings& settings) override;

private:
    [[nodiscard]] std::expected<WallpaperSettings, std::string> readXfconf() const;
    [[nodiscard]] std::expected<void, std::string> writeXfconf(const WallpaperSettings& settings) const;

    QDBusConnection bus_;
};

} // namespace lumaro
