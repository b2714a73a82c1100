// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/MusicWatcher.h"
#include "LumaroCore/Music/MusicSampleParser.h"
#include "LumaroCore/Presence/Playback.h"
#include "LumaroCore/Support/Wire.h"
#include "Tests/Fakes/FakePlayers.h"
#include "Tests/Fakes/ManualClock.h"
#include "Tests/Fakes/ManualSleeper.h"
#include "Tests/Fakes/RecordingLog.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumaro {
namespace {

constexpr auto spotify = MusicSource::spotify;
constexpr auto appleMusic = MusicSource::appleMusic;

ScriptValue listOf(ScriptValue::List values) {
    return {std::move(values)};
}

/// Answers when the test says so.
class ManualArtwork final : public ArtworkFetcher {
public:
    std::unique_ptr<Search> fetch(ArtworkQuery query, std::move_only_function<void(Answer)> then) override {
        queries.push_back(std::move(query));
        answer = std::move(then);
        return std::make_unique<Search>();
    }

    std::vector<ArtworkQuery> queries;
    std::move_only_function<void(Answer)> answer;
};

struct MusicWatcherTest : testing::Test {
    MusicWatcherTest() { players.running.clear(); }

    void settle() {
        sleeper.advance(Seconds{0.3});
        players.answerAll();
    }
    std::string titles() const {
        std::string all;
        for (const auto& one : published) all += (one ? one->title + (one->isPlaying ? "" : " (paused)") : "-") + "|";
        return all;
    }

    ManualSleeper sleeper;
    ManualClock clock{sleeper, Instant{std::chrono::seconds{1'790'000'000}}};
    RecordingLog log;
    FakePlayers players;
    ManualArtwork artwork;
    std::vector<std::optional<NowPlaying>> published;
    MusicWatcher watcher{{players, players, players, artwork, sleeper, clock, log},
                         Seconds{0.3},
                         [this](const auto& playing) { published.push_back(playing); }};
};

TEST(MusicSampleParserTest, ReadsWhatPlayersAnswerAndNothingElse) {
    const auto parsed = [](ScriptValue value, MusicSource source) { return MusicSampleParser::parse(value, source); };
    const MusicSample whole{PlaybackState::playing, "Title", "Artist", "Album", "key", 215'000, 12'500, spotify};
    EXPECT_EQ(parsed(listOf({{"Playing"}, {"Title"}, {"Artist"}, {"Album"}, {"key"}, {215'000.0}, {12.5}}), spotify),
              whole);
    auto inSeconds = whole;
    inSeconds.source = appleMusic;
    EXPECT_EQ(parsed(listOf({{"playing"}, {"Title"}, {"Artist"}, {"Album"}, {"key"}, {"215.0"}, {12.5}}), appleMusic),
              inSeconds);
    const auto stopped = [](MusicSource source) {
        MusicSample sample;
        sample.source = source;
        return sample;
    };
    EXPECT_EQ(parsed(listOf({{"STOPPED"}}), appleMusic), stopped(appleMusic));
    EXPECT_EQ(parsed(listOf({{"playing"}, {"a"}, {"b"}, {"c"}, {"d"}}), spotify), stopped(spotify));
    EXPECT_EQ(parsed(listOf({{"buffering"}, {"a"}, {"b"}, {"c"}, {"d"}, {1.0}, {1.0}}), spotify), std::nullopt);
    EXPECT_EQ(parsed(listOf({}), spotify), std::nullopt);
    EXPECT_EQ(parsed(listOf({{ScriptValue::Missing{}}}), spotify), std::nullopt);
    EXPECT_EQ(parsed({"playing"}, spotify), std::nullopt);
    const auto odd = parsed(
        listOf({{"paused"}, {7.5}, {true}, {ScriptValue::List{}}, {ScriptValue::Missing{}}, {true}, {"x"}}), spotify);
    EXPECT_EQ(odd, (MusicSample{PlaybackState::paused, "7.5", "true", "", "", 1, 0, spotify}));
}

TEST(MusicSampleParserTest, TakesAbsurdNumbersForUnknown) {
    for (const double absurd : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300}) {
        EXPECT_EQ(MusicSampleParser::durationMs(absurd, appleMusic), 0) << absurd;
        const auto sample = MusicSampleParser::parse(FakePlayers::playing("t", "a", absurd, absurd), spotify);
        EXPECT_EQ(sample->durationMs, 0) << absurd;
        EXPECT_EQ(sample->progressMs, 0) << absurd;
    }
    EXPECT_EQ(MusicSampleParser::durationMs(215.0009, appleMusic), 215'000);
}

TEST_F(MusicWatcherTest, PublishesAPlayingPlayerBeforeAPausedOne) {
    players.play(spotify, FakePlayers::playing("Paused", "a", 1, 0, "paused"));
    players.play(appleMusic, FakePlayers::playing("Playing"));
    watcher.start();
    players.answerAll();
    EXPECT_EQ(titles(), "Playing|");
    EXPECT_EQ(published.back()->source, appleMusic);
    EXPECT_EQ(published.back()->durationMs, 215'000);
    players.play(appleMusic, FakePlayers::playing("Playing", "a", 1, 0, "paused"));
    settle();
    EXPECT_EQ(titles(), "Playing|Paused (paused)|");
}

TEST_F(MusicWatcherTest, AsksNoPlayerThatDoesNotRunAndNoneOnATimer) {
    watcher.start();
    EXPECT_EQ(titles(), "-|");
    sleeper.advance(Seconds{86'400});
    EXPECT_TRUE(players.asked.empty());
    EXPECT_EQ(sleeper.waiting(), 0U);
    EXPECT_EQ(titles(), "-|");
}

TEST_F(MusicWatcherTest, SkipsAPlayerThatFailsOrTalksNonsense) {
    players.running[spotify] = {std::unexpected(LumaroCoreError{LumaroCoreError::ScriptFailed{"it is busy"}}), {}};
    players.play(appleMusic, FakePlayers::playing("Song"));
    watcher.start();
    players.answerAll();
    players.play(appleMusic, {"nonsense"});
    settle();
    EXPECT_EQ(titles(), "Song|-|");
    EXPECT_EQ(log.lines.front(), "music: Could not read the music player: it is busy");
}

TEST_F(MusicWatcherTest, MakesOneRefreshOfABurstAndLetsTheLastOneWin) {
    watcher.start();
    for (int i = 0; i < 3; ++i) {
        sleeper.advance(Seconds{0.2});
        players.play(spotify, FakePlayers::playing("Song"));
    }
    settle();
    EXPECT_EQ(players.asked.size(), 1U);
    // A refresh that waits for its player is overtaken by the next one.
    watcher.refresh();
    players.running[spotify].answer = FakePlayers::playing("Next");
    watcher.refresh();
    players.answerAll();
    EXPECT_EQ(titles(), "-|Song|Next|");
}

TEST_F(MusicWatcherTest, PublishesTheCoverWhenItIsFoundAndLooksOnceForEachTrack) {
    players.play(spotify, FakePlayers::playing("Song"));
    watcher.start();
    players.answerAll();
    EXPECT_EQ(artwork.queries, (std::vector{ArtworkQuery{spotify, "Song", "Song", "Nina", 215}}));
    EXPECT_EQ(published.back()->artworkURL, std::nullopt);
    const auto sampledAt = published.back()->sampledAt;
    sleeper.advance(Seconds{1});
    artwork.answer(std::string{"https://i.scdn.co/image/1"});
    EXPECT_EQ(published.back()->artworkURL, "https://i.scdn.co/image/1");
    EXPECT_EQ(published.back()->sampledAt, sampledAt);
    players.tell(spotify);
    settle();
    EXPECT_EQ(published.back()->artworkURL, "https://i.scdn.co/image/1");

    players.play(spotify, FakePlayers::playing("Missed"));
    settle();
    artwork.answer(std::unexpected(LumaroCoreError{LumaroCoreError::ArtworkUnavailable{}}));
    EXPECT_EQ(log.lines.back(), "music: No artwork found for this track.");
    players.tell(spotify);
    settle();
    EXPECT_EQ(artwork.queries.size(), 2U);
    watcher.clearArtworkCache();
    watcher.refresh();
    players.answerAll();
    EXPECT_EQ(artwork.queries.size(), 3U);
    // An answer for a track that is over is dropped, and says nothing of that track.
    auto late = std::move(artwork.answer);
    players.play(spotify, FakePlayers::playing("Other"));
    settle();
    late(std::string{"https://i.scdn.co/image/2"});
    EXPECT_EQ(published.back()->title, "Other");
    EXPECT_EQ(published.back()->artworkURL, std::nullopt);
    EXPECT_EQ(watcher.cachedArtwork("Missed"), std::nullopt);
}

TEST_F(MusicWatcherTest, PublishesNothingOnceItWasStopped) {
    players.play(spotify, FakePlayers::playing("Song"));
    watcher.start();
    watcher.stop();
    players.answerAll();
    players.tell(spotify);
    settle();
    EXPECT_EQ(titles(), "");
    EXPECT_FALSE(players.isObserved());
    watcher.start();
    players.answerAll();
    auto late = std::move(artwork.answer);
    watcher.stop();
    late(std::string{"https://i.scdn.co/image/1"});
    EXPECT_EQ(titles(), "Song|");
}

TEST(PlaybackTest, MovesAPlayingTrackOnAndSurvivesAnyNumber) {
    const Instant now{std::chrono::seconds{1'790'000'000}};
    const auto track = [](std::int64_t progressMs, Instant sampledAt, std::int64_t durationMs) {
        NowPlaying one;
        one.isPlaying = true;
        one.progressMs = progressMs;
        one.sampledAt = sampledAt;
        one.durationMs = durationMs;
        return one;
    };
    const auto playing = track(10'000, now, 200'000);
    EXPECT_EQ(Playback::positionMs(playing, now + std::chrono::seconds{5}), 15'000);
    EXPECT_EQ(Playback::positionMs(playing, now - std::chrono::hours{1}), 10'000);
    EXPECT_EQ(Playback::positionMs(playing, now + std::chrono::hours{1}), 200'000);
    EXPECT_EQ(Playback::endsAt(playing, now), now + std::chrono::seconds{260});
    auto moved = playing;
    moved.sampledAt = now + std::chrono::seconds{5};
    moved.progressMs = 16'000;
    EXPECT_TRUE(Playback::saysTheSame(playing, moved));
    moved.progressMs = 90'000;
    EXPECT_FALSE(Playback::saysTheSame(playing, moved));
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    for (const auto number : {least, std::int64_t{-1}, std::int64_t{0}, most}) {
        for (const auto at : {Instant::min(), now, Instant::max()}) {
            const auto odd = track(number, at, number);
            EXPECT_GE(Playback::positionMs(odd, now), 0);
            EXPECT_LE(Playback::progress(odd, now).value_or(0), 1);
            static_cast<void>(Playback::endsAt(odd, Instant::max()));
            EXPECT_TRUE(Playback::saysTheSame(odd, odd));
        }
    }
}

TEST(PlaybackTest, CutsMegabytesBetweenCharacters) {
    NowPlaying endless;
    endless.title = "n";
    for (int i = 0; i < 500'000; ++i) endless.title += "é";
    endless.artworkURL = "https://i.scdn.co/" + std::string(5000, 'x');
    Playback::shorten(endless);
    EXPECT_EQ(endless.title.size(), 1023U);
    EXPECT_TRUE(endless.title.ends_with("é"));
    EXPECT_FALSE(endless.artworkURL);
}

TEST(NowPlayingTest, LeavesOutACoverThatIsNotKnown) {
    const auto text = Wire::encode(NowPlaying{});
    EXPECT_FALSE(text->contains("artworkURL"));
    EXPECT_FALSE(text->contains("album"));
}

} // namespace
} // namespace lumaro
