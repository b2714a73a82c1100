// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Theme.h"

#include "DesignSystem/Fonts.h"
#include "LumaroCore/Support/EnumNames.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <utility>

namespace lumaro {

QString Theme::sans() const {
    return sansFamily;
}

QString Theme::hand() const {
    return handFamily;
}

void Theme::setDark(bool isDark) {
    if (std::exchange(isDark_, isDark) != isDark) Q_EMIT changed();
}

void Theme::setMotionReduced(bool isReduced) {
    if (std::exchange(isMotionReduced_, isReduced) != isReduced) Q_EMIT changed();
}

QColor Theme::backgroundColor(const QString& background) const {
    return toneOf(fromName<BackgroundID>(background.toStdString()).value_or(BackgroundID::butter), false).base;
}

QColor Theme::inkColor(const QString& ink) const {
    const auto* const tone = std::ranges::find(inkTones, ink, [](const InkTone& it) { return QLatin1String{it.name}; });
    return QColor::fromRgba((tone == inkTones.end() ? inkTones.front() : *tone).shown(isDark_));
}

QStringList Theme::textInks() const {
    QStringList stored;
    for (const auto& ink : lumaro::textInks) stored.append(QLatin1String{ink.stored});
    return stored;
}

QColor Theme::textInkColor(const QString& stored) const {
    for (const auto& ink : lumaro::textInks) {
        if (stored == QLatin1String{ink.stored}) return QColor::fromRgba(ink.shown(isDark_));
    }
    return palette(isDark_).ink;
}

QStringList Theme::inks() const {
    QStringList names;
    for (const auto& tone : inkTones) names.append(QLatin1String{tone.name});
    return names;
}

} // namespace lumaro
