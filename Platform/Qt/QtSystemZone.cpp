// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtSystemZone.h"

#include <QTimeZone>

#include <algorithm>

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

bool QtSystemZone::isKnown(std::string_view name) {
    // The longest in the table has 38. A name is looked for as a file, so no other character gets that far.
    constexpr std::size_t longest = 64;
    const auto isOfName = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '+' ||
               c == '-' || c == '/';
    };
    if (name.empty() || name.size() > longest || !std::ranges::all_of(name, isOfName)) return false;
    const QByteArray id{name.data(), static_cast<qsizetype>(name.size())};
    const bool isOfAnArea = id.contains('/') && !id.startsWith('/');
    const bool isPlain = !id.contains('/') && !id.contains('+') && !id.contains('-');
    // Qt's own list leaves out the other names of zones, such as "US/Pacific".
    return (isOfAnArea || isPlain) && !isRule(id) && QTimeZone{id}.isValid();
}

} // namespace lumaro
