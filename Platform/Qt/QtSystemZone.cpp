// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtSystemZone.h"

#include <QTimeZone>

namespace lumaro {
namespace {

// "TZ" may hold a rule in POSIX's way, such as "CET-1CEST,M3.5.0,M10.5.0/3" or "MSK-3", which Qt reads but nobody else
// knows by that name. Those without a summer time end with their offset; a zone's name does so only after an area.
bool isRule(const QByteArray& id) {
    const char last = id.isEmpty() ? '\0' : id.back();
    return id.contains(',') || (!id.contains('/') && last >= '0' && last <= '9');
}

} // namespace

std::string QtSystemZone::identifier() {
    const auto id = QTimeZone::systemTimeZoneId();
    // An empty one would be valid there: it is UTC.
    if (id.isEmpty() || isRule(id) || !QTimeZone{id}.isValid()) return {};
    return id.toStdString();
}

} // namespace lumaro
