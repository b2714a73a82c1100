// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>

#include <optional>
#include <span>

namespace lumaro {

/// What a screen has for windows: its area without panels, in points of the desktop.
struct ScreenRoom {
    QString name;
    QRect area;
};

/// Where a window was, as it is kept from one run to the next. A value.
struct WindowPlace {
    static constexpr int longestSide = 32767; ///< of a window, and the furthest from its screen's corner

    QSize size;               ///< while it is not maximised
    std::optional<QPoint> at; ///< from the corner of the screen's area; none where windows cannot know
    bool isMaximized = false;
    QString screen{}; ///< its name

    /// "1180x780 120,80 windowed HDMI-1"; a place that is not known is "-".
    QString text() const;
    /// None for what no window can have been: people may have edited it.
    static std::optional<WindowPlace> parse(const QString& text);

    bool operator==(const WindowPlace&) const = default;
};

struct WindowSizes {
    QSize usual;
    QSize least; ///< on a screen that has room for it
};

/// Where a window comes up.
struct WindowGeometry {
    QRect rect; ///< without its frame
    QSize least;
    bool isMaximized = false;

    bool operator==(const WindowGeometry&) const = default;
};

/// Where a window comes up that was there, or that never was anywhere: whole, under its title bar, on the screen that
/// it was on or else on the first. Without any screen in its usual size.
WindowGeometry placeWindow(const std::optional<WindowPlace>& remembered, std::span<const ScreenRoom> screens,
                           const WindowSizes& sizes);

} // namespace lumaro
