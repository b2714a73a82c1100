// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>

#include <span>

namespace lumaro {

/// What text needs against what it stands on, and what lines and signs need.
inline constexpr double textContrast = 4.5;
inline constexpr double lineContrast = 3;

/// How much lighter the one is than the other, 1 to 21: the contrast ratio of WCAG 2.
double contrast(const QColor& one, const QColor& other);

/// The smallest contrast against any of the grounds.
double contrast(const QColor& ink, std::span<const QColor> grounds);

/// The ink, made darker or lighter until it has that contrast against every ground, by whichever takes less. Its hue
/// stays. Where neither is enough it comes out black or white.
QColor legible(const QColor& ink, std::span<const QColor> grounds, double ratio = textContrast);

} // namespace lumaro
