// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisReading.h"
#include "Platform/Linux/MprisCovers.h"
#include "Platform/Linux/MprisNames.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

namespace lumaro {
namespace {

constexpr auto spotify = MusicSource::spotify;
constexpr auto music = MusicSource::appleMusic;
const auto title = QStringLiteral("xesam:title");
const auto artUrl = QStringLiteral("mpris:artUrl");

MprisReading reading(const QVariantMap& metadata, const QVariant& position = {}) {
    return MprisReading::of({{QStringLiteral("PlaybackStatus"), QStringLiteral("Paused")},
                             {QStringLiteral("Metadata"), metadata},
                             {QStringLiteral("Position"), position}})
        .value();
}

TEST(MprisReadingTest, ReadsNumbersOfEveryTypeAndNothingImpossible) {
    using Times = std::pair<std::int64_t, std::int64_t>;
    const auto read = [](const QVariant& length, const QVariant& position) {
        const auto got = reading({{title, QStringLiteral("t")}, {QStringLiteral("mpris:length"), length}}, position);
        return Times{got.lengthUs, got.positionUs};
    };
    EXPECT_EQ(read(7LL, 9ULL), Times(7, 7));
    EXPECT_EQ(read(7U, 5), Times(7, 5));
    EXPECT_EQ(read(0LL, 5.9), Times(0, 5));
    using Doubles = std::numeric_limits<double>;
    for (const auto number : {Doubles::quiet_NaN(), Doubles::infinity(), -Doubles::infinity(), 1e300, -1.0}) {
        EXPECT_EQ(read(number, 5LL), Times(0, 5));
        EXPECT_EQ(read(7LL, number), Times(7, 0));
    }
    EXPECT_EQ(read(std::numeric_limits<qulonglong>::max(), std::numeric_limits<qlonglong>::min()), Times(0, 0));
}

TEST(MprisReadingTest, KeepsTextsShortAndOnOneLine) {
    const auto got = reading({{title, QStringLiteral(" a\nb\x1b[1m ")},
                              {QStringLiteral("xesam:artist"), QStringList(1000, QStringLiteral("ü"))},
                              {QStringLiteral("xesam:album"), QString(100'000, QChar{0x301})}});
    EXPECT_EQ(got.title, "a?b?[1m");
    EXPECT_EQ(got.artist.size(), 400U);
    EXPECT_LE(got.album.size(), 8192U);
}

TEST(MprisReadingTest, NamesATrackByItsUrlWhenThatHasAFile) {
    const auto named = [](const char* url) {
        return reading({{QStringLiteral("xesam:url"), QString::fromUtf8(url)}}).title;
    };
    EXPECT_EQ(named("file:///m/What%3F%20%231.x.mp3"), "What? #1.x");
    EXPECT_EQ(named("/m/Vol. 2"), "Vol. 2");
    EXPECT_EQ(named("https://radio.example/live.mp3?token=1#2"), "live");
    EXPECT_EQ(named("file:///m/.hidden"), ".hidden");
    EXPECT_EQ(named("file:///m/a%0Ab.ogg"), "a?b");
    for (const auto* none : {"", "spotify:track:1", "https://radio.example", "file:///m/", "http://["}) {
        EXPECT_EQ(named(none), "") << none;
    }
}

TEST(MprisReadingTest, TakesWholePicturesAsCoversButNoneTooLarge) {
    const auto cover = [](const char* start, qsizetype size) {
        const auto url = QString::fromLatin1(start).leftJustified(size, u'a');
        return static_cast<qsizetype>(reading({{title, title}, {artUrl, url}}).artUrl.size());
    };
    constexpr auto large = qsizetype{8} * 1024 * 1024;
    EXPECT_EQ(cover("data:image/png;base64,", large), large);
    EXPECT_EQ(cover("data:image/png;base64,", large + 1), 0);
    EXPECT_EQ(cover("https://a/", 4096), 4096);
    EXPECT_EQ(cover("https://a/", 4097), 0);
}

TEST(MprisCoversTest, ForgetsTheOldestTracksAndTheOldestWholePictures) {
    MprisCovers covers;
    const auto key = [](std::size_t track) { return std::to_string(track); };
    const std::string picture(std::size_t{6} * 1024 * 1024, 'a');
    covers.put(music, key(0), "https://a/0");
    for (std::size_t track = 1; track <= 3; ++track) covers.put(music, key(track), picture);
    EXPECT_EQ(covers.find(music, key(1)), std::nullopt);
    for (const std::size_t track : {0U, 2U, 3U}) EXPECT_TRUE(covers.find(music, key(track)).has_value());
    for (std::size_t track = 4; track < 4 + MprisCovers::maxTracks; ++track) covers.put(music, key(track), "https://a");
    EXPECT_EQ(covers.find(music, key(3)), std::nullopt);
    EXPECT_TRUE(covers.find(music, key(4)).has_value());
}

TEST(MprisNamesTest, KnowsPlayersByTheirNames) {
    const auto counts = [](const char* name, bool includesBrowsers) {
        const auto whole = QStringLiteral("org.mpris.MediaPlayer2.") + QString::fromLatin1(name);
        const auto players = MprisNames::players({{whole, QStringLiteral(":1.1")}}, includesBrowsers);
        return players.empty() ? std::nullopt : std::optional{players.begin()->second};
    };
    for (const auto* name : {"spotify", "Spotify.instance12", "spotifyd.x"}) EXPECT_EQ(counts(name, false), spotify);
    for (const auto* name : {"spotify_player", "mpv", "org.gnome.Music", "firefoxy", "edgeless"}) {
        EXPECT_EQ(counts(name, false), music) << name;
    }
    for (const auto* name : {"Firefox.instance_1_379", "firefox-esr", "chromium.instance1", "chrome", "google-chrome",
                             "brave", "microsoft-edge", "edge", "org.gnome.Epiphany.x", "plasma-browser-integration"}) {
        EXPECT_EQ(counts(name, false), std::nullopt) << name;
        EXPECT_EQ(counts(name, true), music) << name;
    }
    EXPECT_EQ(counts("playerctld", true), std::nullopt);
    EXPECT_FALSE(MprisNames::isPlayer(QStringLiteral("org.mpris.MediaPlayer2")));
    EXPECT_FALSE(MprisNames::isPlayer(QStringLiteral("org.mpris.MediaPlayer2x.a")));
}

} // namespace
} // namespace lumaro
