// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisReading.h"

#include "LumaroCore/Support/OneLine.h"
#include "LumaroCore/Support/Unicode.h"

#include <QDBusArgument>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <cstddef>

namespace lumaro {
namespace {

constexpr std::size_t maxCharacters = 300;
// Of a text as it is sent, in UTF-16 units: a character may have marks without end.
constexpr qsizetype maxUnits = 4096;
constexpr qsizetype maxArtUrl = 4096;
constexpr qsizetype maxDataUrl = qsizetype{8} * 1024 * 1024;
// What doubles count one by one; as microseconds, 285 years.
constexpr double maxMicroseconds = 9007199254740992.0;

template <class T>
bool holds(const QVariant& value) {
    return value.metaType() == QMetaType::fromType<T>();
}

QString textOf(const QVariant& value) {
    if (holds<QDBusObjectPath>(value)) return value.value<QDBusObjectPath>().path();
    return holds<QString>(value) ? value.toString() : QString{};
}

std::string shown(const QString& text) {
    auto start = text.left(maxUnits);
    if (start.size() < text.size() && start.back().isHighSurrogate()) start.chop(1);
    return std::string{firstCharacters(onOneLine(trimmed(start.toStdString())), maxCharacters)};
}

std::string artistOf(const QVariant& value) {
    if (!holds<QStringList>(value)) return shown(textOf(value));
    QString all;
    for (const auto& artist : value.toStringList()) {
        if (artist.trimmed().isEmpty()) continue;
        if (!all.isEmpty()) all += QStringLiteral(", ");
        all += artist;
        if (all.size() > maxUnits) break;
    }
    return shown(all);
}

std::int64_t microsecondsOf(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Double: break;
    default: return 0;
    }
    const auto number = value.toDouble();
    return number > 0 && number < maxMicroseconds ? static_cast<std::int64_t>(number) : 0;
}

std::string artUrlOf(const QString& url) {
    const bool isData = url.startsWith(QLatin1String{"data:"}, Qt::CaseInsensitive);
    return url.size() <= (isData ? maxDataUrl : maxArtUrl) ? url.toStdString() : std::string{};
}

// The name of the file that a URL leads to, without its ending; of a URL that has no path, none.
QString fileNameOf(const QString& text) {
    const QUrl url{text.left(maxUnits)};
    if (!url.scheme().isEmpty() && !url.path().startsWith(u'/')) return {};
    const auto name = url.fileName(QUrl::FullyDecoded);
    const auto dot = name.lastIndexOf(u'.');
    const auto ending = name.mid(dot + 1);
    const bool isEnding = dot > 0 && !ending.isEmpty() && ending.size() <= 5 &&
                          std::ranges::all_of(ending, [](QChar c) { return c.isLetterOrNumber(); });
    return isEnding ? name.left(dot) : name;
}

QVariantMap metadataOf(const QVariant& value) {
    if (!holds<QDBusArgument>(value)) return value.toMap();
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1String{"a{sv}"} ? qdbus_cast<QVariantMap>(argument) : QVariantMap{};
}

std::optional<PlaybackState> stateOf(const QString& status) {
    if (status == QLatin1String{"Playing"}) return PlaybackState::playing;
    if (status == QLatin1String{"Paused"}) return PlaybackState::paused;
    if (status == QLatin1String{"Stopped"}) return PlaybackState::stopped;
    return std::nullopt;
}

} // namespace

std::optional<MprisReading> MprisReading::of(const QVariantMap& properties) {
    const auto state = stateOf(textOf(properties.value(QStringLiteral("PlaybackStatus"))));
    if (!state) return std::nullopt;
    if (*state == PlaybackState::stopped) return MprisReading{};

    const auto metadata = metadataOf(properties.value(QStringLiteral("Metadata")));
    const auto url = textOf(metadata.value(QStringLiteral("xesam:url")));
    MprisReading reading{.state = *state,
                         .title = shown(textOf(metadata.value(QStringLiteral("xesam:title")))),
                         .artist = artistOf(metadata.value(QStringLiteral("xesam:artist"))),
                         .album = shown(textOf(metadata.value(QStringLiteral("xesam:album")))),
                         .trackId = shown(textOf(metadata.value(QStringLiteral("mpris:trackid")))),
                         .url = shown(url),
                         .trackKey = {},
                         .lengthUs = microsecondsOf(metadata.value(QStringLiteral("mpris:length"))),
                         .positionUs = microsecondsOf(properties.value(QStringLiteral("Position"))),
                         .artUrl = artUrlOf(textOf(metadata.value(QStringLiteral("mpris:artUrl"))))};
    reading.isTitleSaid = !reading.title.empty();
    if (!reading.isTitleSaid) reading.title = shown(fileNameOf(url));
    if (reading.title.empty()) return MprisReading{};
    if (reading.lengthUs > 0) reading.positionUs = std::min(reading.positionUs, reading.lengthUs);
    reading.trackKey = reading.trackId + '\n' + reading.url + '\n' + reading.title + '\n' + reading.artist;
    return reading;
}

} // namespace lumaro
