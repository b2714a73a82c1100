// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Identifiers.h"

#include <QtCore/QObject>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>

#include <array>

namespace lumaro {

/// The colours of everything that is not on the board: sheets, the dock, texts on them. Warm throughout; every text
/// stands at least 4.5 to 1 against what it stands on.
struct Palette {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QColor room MEMBER room CONSTANT)
    Q_PROPERTY(QColor surface MEMBER surface CONSTANT)
    Q_PROPERTY(QColor raised MEMBER raised CONSTANT)
    Q_PROPERTY(QColor pressed MEMBER pressed CONSTANT)
    Q_PROPERTY(QColor edge MEMBER edge CONSTANT)
    Q_PROPERTY(QColor line MEMBER line CONSTANT)
    Q_PROPERTY(QColor ink MEMBER ink CONSTANT)
    Q_PROPERTY(QColor softInk MEMBER softInk CONSTANT)
    Q_PROPERTY(QColor accent MEMBER accent CONSTANT)
    Q_PROPERTY(QColor accentPressed MEMBER accentPressed CONSTANT)
    Q_PROPERTY(QColor onAccent MEMBER onAccent CONSTANT)
    Q_PROPERTY(QColor here MEMBER here CONSTANT)
    Q_PROPERTY(QColor away MEMBER away CONSTANT)
    Q_PROPERTY(QColor shade MEMBER shade CONSTANT)

public:
    QColor room;          ///< behind everything
    QColor surface;       ///< a sheet
    QColor raised;        ///< what lies on a sheet: fields, chips
    QColor pressed;       ///< the same under a finger
    QColor edge;          ///< where light falls on an edge
    QColor line;          ///< a hairline
    QColor ink;           ///< text
    QColor softInk;       ///< text that steps back
    QColor accent;        ///< the red of the thread
    QColor accentPressed; ///< the same under a finger
    QColor onAccent;      ///< text on it
    QColor here;          ///< the partner is here
    QColor away;          ///< they are not
    QColor shade;         ///< over what waits behind a sheet

    bool operator==(const Palette&) const = default;
};

/// The colours of the light appearance, or of the dark one.
Palette palette(bool isDark);

/// One of the board's paper colours as glass shows it.
struct BackgroundTone {
    QColor light; ///< where the light falls in
    QColor base;
    QColor deep; ///< away from it
};

/// By day, or by lamplight: then `light` is the middle of the lamp's pool.
BackgroundTone toneOf(BackgroundID background, bool isDark);

/// An ink of the doodles: what the board stores, and what it looks like by day and by lamplight. It, or the rim around
/// its strokes, stands at least 3 to 1 against every background.
struct InkTone {
    const char* name;
    QRgb color;
    QRgb lamp;
    QRgb rim = 0; ///< by day, around an ink that the day's glass would swallow; 0: none

    QRgb shown(bool isDark) const { return isDark ? lamp : color; }
};

inline constexpr std::array<InkTone, 12> inkTones{{{"ink", 0xFF3B322B, 0xFFF3E6D0},
                                                   {"coral", 0xFFB5402B, 0xFFF7A08B},
                                                   {"rust", 0xFF8F4A18, 0xFFEBAA79},
                                                   {"sun", 0xFFE2A63B, 0xFFF2C25E, 0xFF7A5206},
                                                   {"moss", 0xFF5A671B, 0xFFC1CD7C},
                                                   {"mint", 0xFF2B6F52, 0xFF93D2B1},
                                                   {"lagoon", 0xFF1D6B74, 0xFF84CFD6},
                                                   {"sky", 0xFF2C638D, 0xFF98C6E7},
                                                   {"night", 0xFF2E3A6B, 0xFFB4BEF3},
                                                   {"plum", 0xFF74447E, 0xFFD6AADF},
                                                   {"rose", 0xFFAA3762, 0xFFF5A6C2},
                                                   {"chalk", 0xFFFFF8EA, 0xFFFFF8EA, 0xFF6E5E49}}};

/// An ink of the letters on notes: what a note stores, and what it looks like by day and by lamplight. On a paper
/// where that is hard to read it is shown darker or lighter.
struct TextInk {
    const char* stored;
    QRgb color;
    QRgb lamp;

    QRgb shown(bool isDark) const { return isDark ? lamp : color; }
};

/// Red, rust, moss, green, lagoon, blue, night, plum, rose.
inline constexpr std::array<TextInk, 9> textInks{{{"#b5472f", 0xFF9C3320, 0xFFF6A692},
                                                  {"#a35a12", 0xFF82470F, 0xFFF0B484},
                                                  {"#6d6a12", 0xFF595610, 0xFFD3D48C},
                                                  {"#4f7a55", 0xFF2F5F38, 0xFFA3D6A8},
                                                  {"#1f6f78", 0xFF175A62, 0xFF93D6DC},
                                                  {"#3f6f93", 0xFF28557A, 0xFFA5CDEB},
                                                  {"#3b4a8a", 0xFF35427E, 0xFFBEC7F6},
                                                  {"#7a4c84", 0xFF683B72, 0xFFDDB7E4},
                                                  {"#a8386a", 0xFF93295A, 0xFFF6B0C9}}};

/// Of links in notes.
inline constexpr TextInk linkInk{"", 0xFF1F4E86, 0xFFA9CBF5};

/// Lengths in points, times in milliseconds.
struct Metrics {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(double hair MEMBER hair CONSTANT)
    Q_PROPERTY(double tiny MEMBER tiny CONSTANT)
    Q_PROPERTY(double small MEMBER small CONSTANT)
    Q_PROPERTY(double medium MEMBER medium CONSTANT)
    Q_PROPERTY(double large MEMBER large CONSTANT)
    Q_PROPERTY(double huge MEMBER huge CONSTANT)
    Q_PROPERTY(double control MEMBER control CONSTANT)
    Q_PROPERTY(double smallRadius MEMBER smallRadius CONSTANT)
    Q_PROPERTY(double radius MEMBER radius CONSTANT)
    Q_PROPERTY(double largeRadius MEMBER largeRadius CONSTANT)
    Q_PROPERTY(int captionText MEMBER captionText CONSTANT)
    Q_PROPERTY(int bodyText MEMBER bodyText CONSTANT)
    Q_PROPERTY(int titleText MEMBER titleText CONSTANT)
    Q_PROPERTY(int displayText MEMBER displayText CONSTANT)
    Q_PROPERTY(int handText MEMBER handText CONSTANT)

public:
    double hair = 1;
    double tiny = 4;
    double small = 8;
    double medium = 12;
    double large = 20;
    double huge = 36;
    double control = 40; ///< the height of what a finger or pointer meets
    double smallRadius = 8;
    double radius = 14;
    double largeRadius = 24;
    int captionText = 13; ///< pixels at scale 1
    int bodyText = 15;
    int titleText = 21;
    int displayText = 34;
    int handText = 26;

    bool operator==(const Metrics&) const = default;
};

struct Motion {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(double spring MEMBER spring CONSTANT)
    Q_PROPERTY(double damping MEMBER damping CONSTANT)
    Q_PROPERTY(int quick MEMBER quick CONSTANT)
    Q_PROPERTY(int land MEMBER land CONSTANT)
    Q_PROPERTY(double overshoot MEMBER overshoot CONSTANT)
    Q_PROPERTY(int glow MEMBER glow CONSTANT)
    Q_PROPERTY(int fall MEMBER fall CONSTANT)
    Q_PROPERTY(int thread MEMBER thread CONSTANT)

public:
    double spring = 4;
    double damping = 0.34;
    int quick = 140;
    int land = 420;
    double overshoot = 1.4;
    int glow = 2000;
    int fall = 850;
    int thread = 2500;

    bool operator==(const Motion&) const = default;
};

} // namespace lumaro
