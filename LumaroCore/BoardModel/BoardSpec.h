// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroCore/Support/Plane.h"

#include <chrono>
#include <cstddef>
#include <optional>

namespace lumaro {

/// The board's fixed sizes, caps and small rules, the same on every device and in the room.
/// Sizes are in points of the virtual canvas unless a name says otherwise.
namespace BoardSpec {

inline constexpr Size canvasSize{1600, 1000};
inline constexpr Rect canvasRect{{0, 0}, canvasSize};

inline constexpr std::size_t maxLiveItems = 60;
inline constexpr std::size_t maxOpsPerBatch = 100;
inline constexpr std::size_t maxItemJSONBytes = 32768;

inline constexpr double maxRotationDegrees = 15.0;
inline constexpr double rotationSnapDegrees = 2.0;
inline constexpr double seededTiltDegrees = 4.0;
inline constexpr double minItemScale = 0.5;
inline constexpr double maxItemScale = 2.0;
/// A scale this close to 1 settles to exactly 1.
inline constexpr double itemScaleSnap = 0.04;

/// How long an unkept note stays up.
inline constexpr std::chrono::seconds noteLifespan{86400};

inline constexpr double maxDoodleSide = 2000.0;
inline constexpr std::size_t maxStrokesPerDoodle = 400;
inline constexpr std::size_t maxPointsPerStroke = 2000;
/// Bytes of wire JSON for the strokes of one doodle.
inline constexpr std::size_t doodleBudgetBytes = 24576;
/// Bytes of the largest media file an item refers to.
inline constexpr std::size_t maxMediaBytes = 2097152;

inline constexpr Size noteSize{280, 280};
/// Square points of a photo print.
inline constexpr double printArea = 105000.0;
/// Width over height of a print whose photo has none.
inline constexpr double defaultPrintAspect = 0.8;
/// Square points of a sticker.
inline constexpr double stickerArea = 42000.0;
inline constexpr Size countdownChipSize{300, 88};
inline constexpr Size musicDiskSize{220, 220};
inline constexpr Size locationWindowSize{300, 300};
inline constexpr Size locationFrameSize{274, 196};
inline constexpr Size timezonesCardSize{380, 180};
inline constexpr Size calendarPageSize{236, 216};
inline constexpr Size pomodoroCardSize{236, 150};

inline constexpr double diskDegreesPerSecond = 30.0;
inline constexpr double breathingPeriodSeconds = 90.0;
inline constexpr double threadDrawSeconds = 2.5;

/// The unscaled size of an item by its kind alone; photos, stickers and doodles have sizes of their own.
Size size(ItemKind kind);

/// Finite and at most 15 degrees either way.
bool isValidRotation(double degrees);
/// Finite and within 0.5 to 2.0.
bool isValidScale(double scale);
/// The nearest valid rotation; 0 when `degrees` is not a number.
double clampRotation(double degrees);
/// The nearest valid scale; 1 when `scale` is not finite.
double clampScale(double scale);
/// The valid scale an item comes to rest at.
double settleScale(double scale);
/// Whether people may resize items of this kind.
bool canResize(ItemKind kind);
/// The size of a photo's print; `aspect` is width over height.
Size printSize(std::optional<double> aspect);
/// The size of a sticker; `aspect` is width over height.
Size stickerSize(double aspect);

} // namespace BoardSpec
} // namespace lumaro
