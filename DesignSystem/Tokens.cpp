// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Tokens.h"

#include <utility>

namespace lumaro {

Palette palette(bool isDark) {
    if (isDark) {
        return {.room = QColor{0x1E1A17},
                .surface = QColor{0x2C2622},
                .raised = QColor{0x3A322C},
                .pressed = QColor{0x4A4038},
                .edge = QColor{0x544A41},
                .line = QColor{0x4A4139},
                .ink = QColor{0xF4EADC},
                .softInk = QColor{0xC4B6A4},
                .accent = QColor{0xE88F76},
                .accentPressed = QColor{0xF3A68F},
                .onAccent = QColor{0x2A1712},
                .here = QColor{0x9CC59A},
                .away = QColor{0x8E8172},
                .shade = QColor{0x12, 0x0E, 0x0B, 0xA0}};
    }
    return {.room = QColor{0xEFE6D8},
            .surface = QColor{0xFBF6EC},
            .raised = QColor{0xFFFCF5},
            .pressed = QColor{0xF1E7D6},
            .edge = QColor{0xFFFEFA},
            .line = QColor{0xE4D8C5},
            .ink = QColor{0x3B322B},
            .softInk = QColor{0x6C5F53},
            .accent = QColor{0xB5472F},
            .accentPressed = QColor{0x9C3A25},
            .onAccent = QColor{0xFFF8EF},
            .here = QColor{0x5C8A5A},
            .away = QColor{0xA89A88},
            .shade = QColor{0x3B, 0x2E, 0x22, 0x66}};
}

namespace {

// What the lamp makes of each: the pool, its far edge, and the corner that it does not reach.
BackgroundTone byLamp(BackgroundID background) {
    switch (background) {
    case BackgroundID::butter: return {QColor{0x795326}, QColor{0x41301F}, QColor{0x221910}};
    case BackgroundID::blush: return {QColor{0x77472E}, QColor{0x40281F}, QColor{0x211613}};
    case BackgroundID::sage: return {QColor{0x6A5433}, QColor{0x373021}, QColor{0x1D1A14}};
    case BackgroundID::sky: return {QColor{0x62513F}, QColor{0x312F2C}, QColor{0x1A1919}};
    case BackgroundID::lilac: return {QColor{0x6D4A40}, QColor{0x39292B}, QColor{0x1E1719}};
    case BackgroundID::oat: return {QColor{0x724F32}, QColor{0x3C2E21}, QColor{0x1F1914}};
    }
    std::unreachable();
}

} // namespace

BackgroundTone toneOf(BackgroundID background, bool isDark) {
    if (isDark) return byLamp(background);
    switch (background) {
    case BackgroundID::butter: return {QColor{0xFFF8E1}, QColor{0xF9ECC4}, QColor{0xEFD9A2}};
    case BackgroundID::blush: return {QColor{0xFDF0EC}, QColor{0xF6DCD5}, QColor{0xE9C1B8}};
    case BackgroundID::sage: return {QColor{0xF2F5EA}, QColor{0xDDE6D1}, QColor{0xC0CFB2}};
    case BackgroundID::sky: return {QColor{0xEFF6F8}, QColor{0xD5E6EC}, QColor{0xB3CDD8}};
    case BackgroundID::lilac: return {QColor{0xF6F1F8}, QColor{0xE5DBEB}, QColor{0xCBBCD6}};
    case BackgroundID::oat: return {QColor{0xF9F4EC}, QColor{0xEBE1D2}, QColor{0xD5C6B0}};
    }
    std::unreachable();
}

} // namespace lumaro
