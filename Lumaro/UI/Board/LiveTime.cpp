// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/LiveTime.h"

#include "DesignSystem/Words.h"

#include <QtCore/QLocale>

#include <chrono>

namespace lumaro {
namespace {

/// What is older than this is told with its time.
constexpr double freshSeconds = 3'600;
constexpr double daySeconds = 86'400;

} // namespace

QDateTime timeAt(Instant instant, const QTimeZone& zone) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(instant).time_since_epoch().count();
    return QDateTime::fromMSecsSinceEpoch(milliseconds, zone);
}

QString clockText(const QDateTime& time) {
    return time.toString(QStringLiteral("HH:mm"));
}

std::optional<QTimeZone> zoneOf(PartnerID slot, const LiveContext& live) {
    if (live.isMe(slot)) return live.zone;
    const auto& here = live.here(slot);
    // An empty name would be UTC.
    if (here && !here->tz.empty()) {
        QTimeZone zone{QByteArray::fromStdString(here->tz)};
        if (zone.isValid()) return zone;
    }
    if (!live.partner.zone) return std::nullopt;
    const QTimeZone zone{QByteArray::fromStdString(*live.partner.zone)};
    return zone.isValid() ? std::optional{zone} : std::nullopt;
}

QString ageText(Instant sampledAt, Instant now, const QTimeZone& zone) {
    const double age = secondsBetween(sampledAt, now);
    if (age <= freshSeconds) return {};
    const auto time = timeAt(sampledAt, zone);
    if (age <= daySeconds) return clockText(time);
    return Words::tr("%1, %2", "3 may, 14:20")
        .arg(Words::locale().toString(time.date(), QStringLiteral("d MMMM")).toLower(), clockText(time));
}

QString comesDown(Instant at, Instant now, const QTimeZone& zone) {
    const auto time = timeAt(at, zone);
    const auto clock = time.toString(QStringLiteral("H:mm"));
    const auto days = timeAt(now, zone).date().daysTo(time.date());
    if (days <= 0) return Words::tr("comes down today at %1").arg(clock);
    if (days == 1) return Words::tr("comes down tomorrow at %1").arg(clock);
    return Words::tr("comes down on %1 at %2", "3 may, 9:14")
        .arg(Words::locale().toString(time.date(), QStringLiteral("d MMMM")).toLower(), clock);
}

} // namespace lumaro
