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

BackgroundTone toneOf(BackgroundID background);

/// An ink of the doodles: what the board stores, and what it looks like.
struct InkTone {
    const char* name;
    QRgb color;
};

inline constexpr std::array<InkTone, 7> inkTones{{{"ink", 0xFF3B322B},
                                                  {"coral", 0xFFCB5A45},
                                                  {"sun", 0xFFE2A63B},
                                                  {"mint", 0xFF5E9C7B},
                                                  {"sky", 0xFF5B8FB3},
                                                  {"plum", 0xFF86588F},
                                                  {"chalk", 0xFFFFF8EA}}};

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
