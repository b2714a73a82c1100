// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Services/Wallpaper.h"

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/PercentEncoding.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view fileScheme = "file://";
constexpr std::string_view heading = "lumaro-own-wallpaper 1 ";
// Of Xfce: "/backdrop/screen0/monitor<name>/workspace<n>/last-image".
constexpr std::string_view backdrop = "/backdrop/screen0/monitor";
constexpr std::string_view lastImage = "/last-image";
constexpr std::string_view imageStyle = "/image-style";

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// As GLib writes a text among values: in single quotes.
std::string inQuotes(std::string_view text) {
    std::string out{"'"};
    for (const char letter : text) {
        if (letter == '\'' || letter == '\\') out += '\\';
        out += letter;
    }
    return out + "'";
}

std::string outOfQuotes(std::string_view text) {
    if (text.size() < 2 || text.front() != text.back() || (text.front() != '\'' && text.front() != '"')) return {};
    std::string out;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] == '\\' && i + 2 < text.size()) ++i;
        out += text[i];
    }
    return out;
}

int digitOf(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    const char small = lower(letter);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

std::string fileOf(std::string_view uri) {
    if (!uri.starts_with(fileScheme)) return std::string{uri.starts_with('/') ? uri : std::string_view{}};
    std::string path;
    for (auto rest = uri.substr(fileScheme.size()); !rest.empty(); rest.remove_prefix(1)) {
        const bool isCoded = rest.size() > 2 && rest[0] == '%' && digitOf(rest[1]) >= 0 && digitOf(rest[2]) >= 0;
        path += isCoded ? static_cast<char>(digitOf(rest[1]) * 16 + digitOf(rest[2])) : rest[0];
        if (isCoded) rest.remove_prefix(2);
    }
    return path;
}

std::string uriOf(std::string_view path) {
    return std::string{fileScheme} + percentEncoded(path, "-._~/");
}

// "<monitor>/workspace<n>" of each place where Xfce keeps a picture.
std::set<std::string> placesOf(const WallpaperSettings& now) {
    std::set<std::string> places;
    for (const auto& [name, value] : now) {
        if (name.starts_with(backdrop) && name.ends_with(lastImage)) {
            places.insert(name.substr(backdrop.size(), name.size() - backdrop.size() - lastImage.size()));
        }
    }
    return places;
}

WallpaperSettings xfceSettings(const WallpaperSettings& now, const std::vector<BoardPicture>& pictures) {
    WallpaperSettings set;
    auto places = placesOf(now);
    for (const auto& [screen, path] : pictures) {
        places.insert(screen + "/workspace0");
        for (const auto& place : places) {
            if (!place.starts_with(screen + "/")) continue;
            constexpr std::string_view zoomed = "i:5";
            set[std::string{backdrop}.append(place).append(lastImage)] = "s:" + path;
            set[std::string{backdrop}.append(place).append(imageStyle)] = zoomed;
        }
    }
    return set;
}

// A value on one line.
std::string escaped(std::string_view text) {
    std::string out;
    for (const char letter : text) {
        if (letter == '\n') {
            out += "\\n";
        } else {
            if (letter == '\\') out += '\\';
            out += letter;
        }
    }
    return out;
}

std::string unescaped(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && i + 1 < text.size();
        if (isEscape) ++i;
        out += isEscape && text[i] == 'n' ? '\n' : text[i];
    }
    return out;
}

bool isMarked(const std::optional<std::string>& value) {
    return value && value->contains(boardPictureMark);
}

/// The setting of how the picture lies that the setting `name` names; empty where there is none of its own.
std::string wayOf(std::string_view name) {
    if (name == "picture-uri" || name == "picture-filename") return "picture-options";
    if (name == "wallpaper") return "wallpaper_mode";
    if (!name.ends_with(lastImage)) return {};
    return std::string{name.substr(0, name.size() - lastImage.size())}.append(imageStyle);
}

WallpaperSettings settingsOf(std::initializer_list<std::pair<std::string_view, std::string>> named) {
    WallpaperSettings settings;
    for (const auto& [name, value] : named) settings.emplace(name, value);
    return settings;
}

} // namespace

std::optional<WallpaperDesk> wallpaperDeskOf(std::string_view session, std::string_view iconProgram) {
    using enum WallpaperDesk;
    std::string name;
    std::ranges::transform(session, std::back_inserter(name), lower);
    // "ubuntu:GNOME": the most special name first.
    for (const auto& [part, desk] : {std::pair<std::string_view, WallpaperDesk>{"cinnamon", cinnamon},
                                     {"mate", mate},
                                     {"xfce", xfce},
                                     {"gnome", gnome},
                                     {"unity", gnome},
                                     {"budgie", gnome}}) {
        if (name.contains(part)) return desk;
    }
    for (const auto& [program, desk] : {std::pair<std::string_view, WallpaperDesk>{"pcmanfm", pcmanfm},
                                        {"xfdesktop", xfce},
                                        {"nemo-desktop", cinnamon},
                                        {"caja", mate}}) {
        if (iconProgram == program) return desk;
    }
    return std::nullopt;
}

bool hasOneWallpaper(WallpaperDesk desk) {
    return desk != WallpaperDesk::xfce;
}

WallpaperSettings settingsFor(WallpaperDesk desk, const WallpaperSettings& now,
                              const std::vector<BoardPicture>& pictures) {
    if (desk == WallpaperDesk::xfce) return xfceSettings(now, pictures);
    if (pictures.empty()) return {};
    const auto& path = pictures.front().path;
    switch (desk) {
    // The picture has the shape of all screens together, so that nothing is cut off of one alone either.
    case WallpaperDesk::gnome:
        return settingsOf({{"picture-uri", inQuotes(uriOf(path))},
                           {"picture-uri-dark", inQuotes(uriOf(path))},
                           {"picture-options", inQuotes("spanned")}});
    case WallpaperDesk::cinnamon:
        return settingsOf({{"picture-uri", inQuotes(uriOf(path))}, {"picture-options", inQuotes("spanned")}});
    case WallpaperDesk::mate:
        return settingsOf({{"picture-filename", inQuotes(path)}, {"picture-options", inQuotes("spanned")}});
    case WallpaperDesk::pcmanfm: return settingsOf({{"wallpaper", path}, {"wallpaper_mode", "screen"}});
    case WallpaperDesk::xfce: break;
    }
    std::unreachable();
}

bool isBoardPicture(const WallpaperSettings& settings) {
    return std::ranges::any_of(settings, [](const auto& setting) { return isMarked(setting.second); });
}

bool hasMadeWay(const WallpaperSettings& set, const WallpaperSettings& now) {
    return std::ranges::any_of(set, [&](const auto& setting) {
        const auto found = now.find(setting.first);
        return isMarked(setting.second) && (found == now.end() || !isMarked(found->second));
    });
}

WallpaperSettings settingsBack(const WallpaperSettings& own, const WallpaperSettings& now) {
    WallpaperSettings back;
    const auto giveBack = [&](const std::string& name) {
        const auto found = own.find(name);
        back[name] = found == own.end() ? std::nullopt : found->second;
    };
    for (const auto& [name, value] : now) {
        if (!isMarked(value)) continue;
        giveBack(name);
        // How the picture lies goes with it.
        if (const auto how = wayOf(name); !how.empty()) giveBack(how);
    }
    return back;
}

std::string pictureIn(WallpaperDesk desk, const WallpaperSettings& settings, std::string_view screen) {
    const auto valueOf = [&](const std::string& name) {
        const auto found = settings.find(name);
        return found == settings.end() ? std::string{} : found->second.value_or("");
    };
    switch (desk) {
    case WallpaperDesk::gnome:
    case WallpaperDesk::cinnamon: return fileOf(outOfQuotes(valueOf("picture-uri")));
    case WallpaperDesk::mate: return fileOf(outOfQuotes(valueOf("picture-filename")));
    case WallpaperDesk::pcmanfm: return fileOf(valueOf("wallpaper"));
    case WallpaperDesk::xfce: {
        const auto value = valueOf(std::string{backdrop}.append(screen).append("/workspace0").append(lastImage));
        return value.starts_with("s:") ? fileOf(value.substr(2)) : std::string{};
    }
    }
    std::unreachable();
}

std::string written(const OwnWallpaper& own) {
    auto text = std::string{heading}.append(nameOf(own.desk)).append("\n");
    for (const auto& [name, value] : own.settings) {
        text.append(escaped(name)).append("\n").append(value ? "=" + escaped(*value) : "-").append("\n");
    }
    return text;
}

std::expected<OwnWallpaper, std::string> readOwnWallpaper(std::string_view text) {
    const auto takeLine = [&]() -> std::string_view {
        const auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        return line;
    };
    auto first = takeLine();
    if (!first.starts_with(heading)) return std::unexpected("it is of another kind");
    const auto desk = fromName<WallpaperDesk>(first.substr(heading.size()));
    if (!desk) return std::unexpected("of a desktop that is not known");
    OwnWallpaper own{*desk, {}};
    while (!text.empty()) {
        const auto name = unescaped(takeLine());
        const auto value = takeLine();
        if (name.empty() || value.empty() || own.settings.size() == mostWallpaperSettings) {
            return std::unexpected("it is damaged");
        }
        own.settings[name] = value.front() == '=' ? std::optional{unescaped(value.substr(1))} : std::nullopt;
    }
    return own;
}

} // namespace lumaro
