// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisNames.h"

#include <QStringView>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ranges>
#include <utility>

namespace lumaro {
namespace {

// A player with several names is the first of these that one of them says.
enum class Kind : std::uint8_t {
    proxy,         ///< shows what other players show
    browserBridge, ///< shows what the browsers of the desktop play
    browser,
    spotify,
    other,
};

constexpr std::array<QStringView, 14> browsers{
    u"firefox", u"librewolf", u"chromium",       u"chrome",   u"google-chrome",      u"brave",  u"vivaldi",
    u"opera",   u"edge",      u"microsoft-edge", u"epiphany", u"org.gnome.Epiphany", u"falkon", u"qutebrowser"};

// Also where the name goes on: "firefox.instance_1_379", "firefox-esr".
bool isNamed(QStringView name, QStringView program) {
    if (!name.startsWith(program, Qt::CaseInsensitive)) return false;
    const auto rest = name.mid(program.size());
    return rest.isEmpty() || QStringView{u".-_"}.contains(rest.front());
}

// A program and the instances of it, and no other program whose name begins like it.
bool isInstanceOf(QStringView name, QStringView program) {
    const auto end = name.indexOf(u'.');
    return name.left(end < 0 ? name.size() : end).compare(program, Qt::CaseInsensitive) == 0;
}

Kind kindOf(QStringView name) {
    const auto player = name.mid(QStringView{MprisNames::root}.size() + 1);
    if (isInstanceOf(player, u"playerctld")) return Kind::proxy;
    if (isInstanceOf(player, u"plasma-browser-integration")) return Kind::browserBridge;
    if (std::ranges::any_of(browsers, [&](auto browser) { return isNamed(player, browser); })) return Kind::browser;
    return isInstanceOf(player, u"spotify") || isInstanceOf(player, u"spotifyd") ? Kind::spotify : Kind::other;
}

} // namespace

bool MprisNames::isPlayer(const QString& name) {
    return name.startsWith(QStringView{root}) && name.mid(QStringView{root}.size()).startsWith(u'.');
}

std::map<QString, MusicSource> MprisNames::players(const Owners& owners, bool includesBrowsers) {
    std::map<QString, Kind> kinds;
    for (const auto& [name, owner] : owners) {
        const auto kind = kindOf(name);
        auto& known = kinds.try_emplace(owner, kind).first->second;
        known = std::min(known, kind);
    }
    const bool isBridged =
        std::ranges::any_of(kinds | std::views::values, [](Kind kind) { return kind == Kind::browserBridge; });
    const auto counts = [&](Kind kind) {
        switch (kind) {
        case Kind::proxy: return false;
        case Kind::browserBridge: return includesBrowsers;
        case Kind::browser: return includesBrowsers && !isBridged;
        case Kind::spotify:
        case Kind::other: return true;
        }
        std::unreachable();
    };
    std::map<QString, MusicSource> players;
    for (const auto& [owner, kind] : kinds) {
        if (!counts(kind)) continue;
        players.emplace(owner, kind == Kind::spotify ? MusicSource::spotify : MusicSource::appleMusic);
    }
    return players;
}

} // namespace lumaro
