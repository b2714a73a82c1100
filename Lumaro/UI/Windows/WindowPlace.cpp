// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Windows/WindowPlace.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace lumaro {
namespace {

constexpr int titleBar = 40;           // nobody says how high it is before a window is shown
constexpr qsizetype longestKept = 200; // characters; longer names of screens are none

/// Where windows may be on a screen.
QRect roomOf(const ScreenRoom& screen) {
    return screen.area.height() > 2 * titleBar ? screen.area.adjusted(0, titleBar, 0, 0) : screen.area;
}

QPoint heldIn(const QRect& room, QPoint corner, QSize size) {
    return {std::clamp(corner.x(), room.left(), std::max(room.left(), room.right() + 1 - size.width())),
            std::clamp(corner.y(), room.top(), std::max(room.top(), room.bottom() + 1 - size.height()))};
}

} // namespace

QString WindowPlace::text() const {
    const auto where = at ? QStringLiteral("%1,%2").arg(at->x()).arg(at->y()) : QStringLiteral("-");
    return QStringLiteral("%1x%2 %3 %4 %5")
        .arg(size.width())
        .arg(size.height())
        .arg(where, isMaximized ? QStringLiteral("maximized") : QStringLiteral("windowed"), screen);
}

std::optional<WindowPlace> WindowPlace::parse(const QString& text) {
    static const QRegularExpression form{QStringLiteral(
        "\\A([0-9]{1,5})x([0-9]{1,5}) (?:-|(-?[0-9]{1,5}),(-?[0-9]{1,5})) (maximized|windowed) (.*)\\z")};
    if (text.size() > longestKept) return std::nullopt;
    const auto found = form.match(text);
    if (!found.hasMatch()) return std::nullopt;
    const auto number = [&](int part) { return found.captured(part).toInt(); };
    WindowPlace place{.size = {number(1), number(2)},
                      .at = {},
                      .isMaximized = found.captured(5) == QStringLiteral("maximized"),
                      .screen = found.captured(6)};
    if (!found.captured(3).isEmpty()) place.at = QPoint{number(3), number(4)};
    const auto isSane = [](int length) { return std::abs(length) <= longestSide; };
    const bool hasPlace = !place.at || (isSane(place.at->x()) && isSane(place.at->y()));
    const bool hasSize = isSane(place.size.width()) && isSane(place.size.height()) && !place.size.isEmpty();
    return hasPlace && hasSize ? std::optional{place} : std::nullopt;
}

WindowGeometry placeWindow(const std::optional<WindowPlace>& remembered, std::span<const ScreenRoom> screens,
                           const WindowSizes& sizes) {
    const auto wanted = (remembered ? remembered->size : sizes.usual).expandedTo(sizes.least);
    const bool isMaximized = remembered && remembered->isMaximized;
    if (screens.empty()) return {{{}, wanted}, sizes.least, isMaximized};
    const auto kept = std::ranges::find_if(
        screens, [&](const ScreenRoom& screen) { return remembered && screen.name == remembered->screen; });
    const auto& screen = kept == screens.end() ? screens.front() : *kept;
    const auto room = roomOf(screen);
    const auto size = wanted.boundedTo(room.size());
    const auto spare = room.size() - size;
    const auto corner = remembered && remembered->at ? screen.area.topLeft() + *remembered->at
                                                     : room.topLeft() + QPoint{spare.width(), spare.height()} / 2;
    return {{heldIn(room, corner, size), size}, sizes.least.boundedTo(room.size()), isMaximized};
}

} // namespace lumaro
