// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/LiveContext.h"

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <optional>

namespace lumaro {

// Times as the cards tell them.

QDateTime timeAt(Instant instant, const QTimeZone& zone);
/// "14:20".
QString clockText(const QDateTime& time);
/// The zone of a person: that of the place they share, else the one they share alone; of oneself this device's own.
std::optional<QTimeZone> zoneOf(PartnerID slot, const LiveContext& live);
/// When something was known that is old by now, "14:20", and from a day on "3 may, 14:20"; empty while it is fresh.
QString ageText(Instant sampledAt, Instant now, const QTimeZone& zone);

/// When a note comes down: "today at 21:05", "tomorrow at 9:14", "on 3 may at 9:14".
QString comesDown(Instant at, Instant now, const QTimeZone& zone);

} // namespace lumaro
