// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// A desktop that lets a program set its wallpaper, each by a door of its own.
enum class WallpaperDesk : std::uint8_t { gnome, cinnamon, mate, xfce, pcmanfm };

constexpr std::array<std::string_view, 5> namesOf(WallpaperDesk) {
    return {"gnome", "cinnamon", "mate", "xfce", "pcmanfm"};
}

/// What a desktop is told of its wallpaper, by the names that it has for these settings, each as a text of its own
/// kind. None where the desktop's default holds.
using WallpaperSettings = std::map<std::string, std::optional<std::string>>;
/// More than 16 monitors of four workspaces have.
constexpr std::size_t mostWallpaperSettings = 256;

/// A picture of the board, for the screen of that name or, where `screen` is empty, for all of them together.
struct BoardPicture {
    std::string screen;
    std::string path;

    bool operator==(const BoardPicture&) const = default;
};

/// The desktop by what the session calls itself (`XDG_CURRENT_DESKTOP`), else by the program whose window has the
/// icons.
std::optional<WallpaperDesk> wallpaperDeskOf(std::string_view session, std::string_view iconProgram);

/// Whether one picture lies over all screens, instead of one for each.
bool hasOneWallpaper(WallpaperDesk desk);

/// What is to be set so that the pictures are the wallpaper, where `now` is set. Nothing else changes.
WallpaperSettings settingsFor(WallpaperDesk desk, const WallpaperSettings& now,
                              const std::vector<BoardPicture>& pictures);

/// The file name of a picture of the board begins with it, by which its own are told from other people's.
constexpr std::string_view boardPictureMark = "lumaro-board-";
/// Whether the wallpaper is a picture of the board.
bool isBoardPicture(const WallpaperSettings& settings);

/// Whether somebody has chosen another picture where the board was `set`, anywhere.
bool hasMadeWay(const WallpaperSettings& set, const WallpaperSettings& now);

/// What is to be set so that `own` is the wallpaper again wherever `now` has the board.
WallpaperSettings settingsBack(const WallpaperSettings& own, const WallpaperSettings& now);

/// The file of the picture on that screen; empty where there is none that a file holds.
std::string pictureIn(WallpaperDesk desk, const WallpaperSettings& settings, std::string_view screen);

/// The person's own wallpaper, as it is kept while the board is in its place.
struct OwnWallpaper {
    WallpaperDesk desk = WallpaperDesk::gnome;
    WallpaperSettings settings;

    bool operator==(const OwnWallpaper&) const = default;
};

std::string written(const OwnWallpaper& own);
/// The error is for the log.
[[nodiscard]] std::expected<OwnWallpaper, std::string> readOwnWallpaper(std::string_view text);

} // namespace lumaro
