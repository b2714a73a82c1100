// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/SpokenItem.h"

#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Overloaded.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QStringList>

namespace lumaro {
namespace {

QDate dayOf(Instant instant, const QTimeZone& zone) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(instant).time_since_epoch().count();
    return QDateTime::fromMSecsSinceEpoch(milliseconds, zone).date();
}

QString since(Instant instant, const LiveContext& live) {
    const auto day = dayOf(instant, live.zone);
    const auto days = day.daysTo(dayOf(live.now, live.zone));
    if (days <= 0) return QStringLiteral("today");
    if (days == 1) return QStringLiteral("yesterday");
    return QStringLiteral("on ") + QLocale{QLocale::English}.toString(day, QStringLiteral("d MMMM")).toLower();
}

QString quoted(const QString& text) {
    return text.isEmpty() ? QString{} : QStringLiteral("'%1'").arg(text.simplified());
}

/// What is said of a card: all that is written on it.
QString joined(std::initializer_list<QString> parts) {
    QStringList said;
    for (const auto& part : parts) {
        if (!part.isEmpty()) said.append(part);
    }
    return said.join(QStringLiteral(", "));
}

QString day(const DayFace& face) {
    QStringList said{joined({face.whose, face.weekday, face.day + QLatin1Char{' '} + face.month, face.words})};
    for (const auto& event : face.events) said.append(event.time + QLatin1Char{' '} + event.title);
    return said.join(QStringLiteral(", "));
}

QString clock(const ClocksFace::Side& side) {
    return joined({side.name, side.time, side.words});
}

} // namespace

QString spoken(const BoardItem& item, const ItemFace& face, const LiveContext& live) {
    const auto whose = QStringLiteral("%1 from %2, pinned %3")
                           .arg(QStringLiteral("%1"), personName(item.author, live), since(item.createdAt, live));
    const auto pinned = [&](const char* what, const QString& text) {
        return joined({whose.arg(QLatin1String{what}), text});
    };
    return std::visit(
        Overloaded{
            [&](const NoteFace& it) {
                return pinned(it.isKept ? "kept note" : "note", quoted(qText(std::string_view{it.text.plainText()})));
            },
            [&](const PhotoFace& it) { return pinned("photo", joined({quoted(it.caption), it.words})); },
            [&](const StickerFace& it) { return pinned("sticker", it.words); },
            [&](const DoodleFace&) { return pinned("doodle", {}); },
            [&](const CountdownFace& it) {
                return joined({QStringLiteral("countdown"), quoted(it.label), it.figure + QLatin1Char{' '} + it.unit});
            },
            [&](const MusicFace& it) {
                return joined({QStringLiteral("music"), quoted(it.title), it.artist, it.words});
            },
            [&](const WindowFace& it) {
                return joined({QStringLiteral("window"), it.place, it.time, it.temperature,
                               it.sky ? qText(nameOf(*it.sky)) : QString{}, it.words});
            },
            [&](const ClocksFace& it) {
                return joined({QStringLiteral("clocks"), clock(it.mine), clock(it.theirs), it.between});
            },
            [&](const DayFace& it) { return day(it); },
            [&](const BlockFace& it) { return joined({QStringLiteral("block card"), it.figure, it.who}); }},
        face.value());
}

} // namespace lumaro
