// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisPlayers.h"

#include "LumaroCore/Music/MusicScripts.h"
#include "Tests/Platform/Linux/PrivateBus.h"
#include "Tests/Platform/Linux/StandInPlayer.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <algorithm>
#include <map>
#include <optional>

namespace lumaro {
namespace {

constexpr auto spotify = MusicSource::spotify;
constexpr auto music = MusicSource::appleMusic;
const auto playing = QStringLiteral("Playing");
const auto paused = QStringLiteral("Paused");
const auto stopped = QStringLiteral("Stopped");
const auto title = QStringLiteral("xesam:title");
const auto artist = QStringLiteral("xesam:artist");
const auto album = QStringLiteral("xesam:album");
const auto url = QStringLiteral("xesam:url");
const auto trackId = QStringLiteral("mpris:trackid");
const auto length = QStringLiteral("mpris:length");
const auto artUrl = QStringLiteral("mpris:artUrl");
const auto position = QStringLiteral("Position");

QVariant object(const QString& path) {
    return QVariant::fromValue(QDBusObjectPath{path});
}

// The values of an answer in a row, those of the track key with "~" between; or why there is none.
std::string written(const ScriptRunner::Answer& answer) {
    if (!answer) return std::get<LumaroCoreError::ScriptFailed>(answer.error().value).detail;
    std::string all;
    for (const auto& value : std::get<ScriptValue::List>(answer->value)) {
        all += (all.empty() ? "" : " | ") + value.text().value_or("?");
    }
    std::ranges::replace(all, '\n', '~');
    return all;
}

class MprisPlayersTest : public BusTest {
protected:
    MprisPlayersTest() { observe(); }

    void observe() {
        for (const auto source : {spotify, music}) {
            observers_.push_back(players_.observe(source, [this, source] { ++changes_[source]; }));
        }
    }

    ScriptRunner::Answer answerTo(std::string_view script) {
        std::optional<ScriptRunner::Answer> got;
        const auto run = players_.run(script, [&](ScriptRunner::Answer answer) { got = std::move(answer); });
        EXPECT_FALSE(got.has_value());
        waitUntil([&] { return got.has_value(); });
        return std::move(got).value();
    }
    std::string asked(MusicSource source = music) { return written(answerTo(MusicScripts::source(source))); }

    void waitForChange(MusicSource source = music) {
        waitUntil([&] { return changes_[source] > 0; });
        settle();
        changes_[source] = 0;
    }
    void waitForPlayer(MusicSource source = music) {
        waitUntil([&] { return players_.isRunning(source); });
        waitForChange(source);
    }
    // What was sent before this has been heard after it, and was no change.
    void expectNoChange(StandInPlayer& player) {
        player.signalSeeked(QVariant{0LL});
        waitUntil([&] { return changes_[music] > 0; });
        settle();
        EXPECT_EQ(std::exchange(changes_[music], 0), 1);
    }

    MprisPlayers players_{bus(), std::chrono::milliseconds{50}};
    std::map<MusicSource, int> changes_;
    std::vector<std::unique_ptr<PlayerNotifications::Observer>> observers_;
};

// What real players say, and what is made of it.
struct Speech {
    const char* player;
    QString name;
    QString status;
    QVariantMap metadata;
    QVariant position;
    std::string answer;
    std::string cover = "";

    MusicSource source() const { return name.startsWith(QStringLiteral("spotify")) ? spotify : music; }
};

void PrintTo(const Speech& speech, std::ostream* out) {
    *out << speech.player;
}

std::vector<Speech> speeches() {
    const auto text = [](const char* value) { return QVariant{QString::fromUtf8(value)}; };
    const auto texts = [](std::initializer_list<const char*> values) {
        QStringList list;
        for (const auto* value : values) list.append(QString::fromUtf8(value));
        return QVariant{list};
    };
    const auto mpdTrack = object(QStringLiteral("/org/mpris/MediaPlayer2/Track/3"));
    const auto microseconds = [](qlonglong value) { return QVariant{value}; };
    return {
        {"mpd",
         QStringLiteral("mpd"),
         playing,
         {{trackId, mpdTrack},
          {length, microseconds(12'000'000)},
          {title, text("One")},
          {artist, texts({"First", "Second"})},
          {album, text("Tones")},
          {url, text("file:///m/a.flac")}},
         microseconds(2'000'000),
         "playing | One | First, Second | Tones | /org/mpris/MediaPlayer2/Track/3~file:///m/a.flac~One~First, Second | "
         "12 | 2"},
        {"mpdAtItsStart", QStringLiteral("mpd"), playing, {}, microseconds(0), "stopped"},
        {"audacious",
         QStringLiteral("audacious"),
         playing,
         {{trackId, object(QStringLiteral("/org/mpris/MediaPlayer2/CurrentTrack"))},
          {length, microseconds(215'500'000)},
          {title, text("Desfado")},
          {artist, texts({"Ana Moura;Chico"})},
          {url, text("file:///m/1.mp3")},
          {artUrl, text("file:///tmp/audacious-temp-CX94Y3")}},
         microseconds(0),
         "playing | Desfado | Ana Moura;Chico |  | "
         "/org/mpris/MediaPlayer2/CurrentTrack~file:///m/1.mp3~Desfado~Ana Moura;Chico | 215.5 | 0",
         "file:///tmp/audacious-temp-CX94Y3"},
        {"cmus",
         QStringLiteral("cmus"),
         paused,
         {{trackId, object(QStringLiteral("/2"))},
          {length, microseconds(60'000'000)},
          {title, text("Two")},
          {artist, texts({"B"})},
          {album, text("C")}},
         microseconds(1'500'000),
         "paused | Two | B | C | /2~~Two~B | 60 | 1.5"},
        {"cmusStopped",
         QStringLiteral("cmus"),
         stopped,
         {{trackId, object(QStringLiteral("/2"))}, {title, text("Two")}},
         microseconds(0),
         "stopped"},
        {"strawberry", QStringLiteral("strawberry"), stopped, {}, microseconds(0), "stopped"},
        {"spotifyDesktop",
         QStringLiteral("spotify"),
         playing,
         {{trackId, text("/com/spotify/track/4uLU")},
          {length, QVariant{183'456'000ULL}},
          {title, text("Solo")},
          {artist, texts({"Nina"})},
          {album, text("Alone")},
          {url, text("https://open.spotify.com/track/4uLU")},
          {artUrl, text("https://i.scdn.co/image/ab67616d0000b273")}},
         microseconds(900'000'000),
         "playing | Solo | Nina | Alone | /com/spotify/track/4uLU~https://open.spotify.com/track/4uLU~Solo~Nina | "
         "183456 | 183.456",
         "https://i.scdn.co/image/ab67616d0000b273"},
        {"spotifyd",
         QStringLiteral("spotifyd.instance7"),
         playing,
         {{trackId, text("spotify:track:4uLU")},
          {length, microseconds(1'000'000)},
          {title, text("Solo")},
          {artist, texts({"Nina"})}},
         microseconds(-3),
         "playing | Solo | Nina |  | spotify:track:4uLU~~Solo~Nina | 1000 | 0"},
        {"firefox",
         QStringLiteral("firefox.instance_1_379"),
         playing,
         {{trackId, object(QStringLiteral("/org/mpris/MediaPlayer2/firefox"))},
          {title, text("A talk")},
          {artist, texts({""})},
          {album, text("")}},
         {},
         "playing | A talk |  |  | /org/mpris/MediaPlayer2/firefox~~A talk~ | 0 | 0"},
        {"chromium",
         QStringLiteral("chromium.instance42"),
         playing,
         {{trackId, object(QStringLiteral("/org/chromium/MediaPlayer2/TrackList/TrackA1"))},
          {length, microseconds(0)},
          {title, text("Live")},
          {artist, texts({"Radio"})},
          {artUrl, text("file:///tmp/.com.google.Chrome.1")}},
         microseconds(5'000'000),
         "playing | Live | Radio |  | /org/chromium/MediaPlayer2/TrackList/TrackA1~~Live~Radio | 0 | 5",
         "file:///tmp/.com.google.Chrome.1"},
        {"plasma",
         QStringLiteral("plasma-browser-integration"),
         playing,
         {{trackId, object(QStringLiteral("/t"))},
          {length, microseconds(9'000'000)},
          {title, text("Clip")},
          {artist, texts({"C"})},
          {artUrl, text("https://i.ytimg.com/a")}},
         microseconds(1'000'000),
         "playing | Clip | C |  | /t~~Clip~C | 9 | 1",
         "https://i.ytimg.com/a"},
    };
}

class MprisSpeechTest : public MprisPlayersTest, public testing::WithParamInterface<Speech> {};

TEST_P(MprisSpeechTest, IsUnderstood) {
    const auto& speech = GetParam();
    players_.setIncludesBrowsers(true);
    StandInPlayer player{speech.name};
    player.properties = {{QStringLiteral("PlaybackStatus"), speech.status},
                         {QStringLiteral("Metadata"), speech.metadata}};
    if (speech.position.isValid()) player.properties.insert(position, speech.position);
    waitForPlayer(speech.source());
    const auto answer = answerTo(MusicScripts::source(speech.source()));
    EXPECT_EQ(written(answer), speech.answer);
    const auto& list = std::get<ScriptValue::List>(answer->value);
    const auto key = list.size() > 4 ? list[4].text().value_or("") : "";
    EXPECT_EQ(players_.artworkOf(speech.source(), key).value_or(""), speech.cover);
}

INSTANTIATE_TEST_SUITE_P(OfPlayers, MprisSpeechTest, testing::ValuesIn(speeches()),
                         [](const auto& row) { return std::string{row.param.player}; });

TEST_F(MprisPlayersTest, TellsOfPlayersThatComeGoAndCrash) {
    EXPECT_EQ(asked(spotify), "No music player answered");
    std::optional<StandInPlayer> player{QStringLiteral("spotify")};
    player->own(QStringLiteral("spotify.instance9"));
    waitForPlayer(spotify);
    EXPECT_FALSE(players_.isRunning(music));
    // The other name of the same player changes nothing.
    player->leave(QStringLiteral("spotify"));
    player->signalSeeked(QVariant{0LL});
    waitForChange(spotify);
    EXPECT_TRUE(players_.isRunning(spotify));
    player.reset();
    waitForChange(spotify);
    EXPECT_FALSE(players_.isRunning(spotify));
    player.emplace(QStringLiteral("mpv"));
    waitForPlayer(music);
    player->leave(QStringLiteral("mpv"));
    waitForChange(music);
    EXPECT_FALSE(players_.isRunning(music));
    EXPECT_EQ(changes_[spotify], 0);
}

TEST_F(MprisPlayersTest, OnePlayerIsOneHoweverManyNamesItHas) {
    StandInPlayer player{QStringLiteral("mpv")};
    player.own(QStringLiteral("mpv.instance1"));
    waitForPlayer();
    player.play(playing, {{title, QStringLiteral("One")}});
    waitForChange();
    EXPECT_EQ(asked(), "playing | One |  |  | ~~One~ | 0 | 0");
    EXPECT_EQ(player.questions, 1);
    expectNoChange(player);
}

TEST_F(MprisPlayersTest, HearsItsPlayersSpeakOfTheirMusicAndNobodyElse) {
    StandInPlayer player{QStringLiteral("mpv")};
    const StandInPlayer proxy{QStringLiteral("playerctld")};
    auto stranger =
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("stranger"));
    waitForPlayer();
    const QVariantMap status{{QStringLiteral("PlaybackStatus"), paused}};
    player.signalChange({{QStringLiteral("Rate"), 1.5}});
    waitForChange();
    player.signalChange({}, {QStringLiteral("Metadata")});
    waitForChange();
    player.signalSeeked(QStringLiteral("of another type"));
    waitForChange();

    player.signalChange({{QStringLiteral("Volume"), 0.5}}, {QStringLiteral("CanGoNext")});
    player.signalChange(status, {}, QStringLiteral("org.mpris.MediaPlayer2"));
    expectNoChange(player);
    auto signal = QDBusMessage::createSignal(QStringLiteral("/org/mpris/MediaPlayer2"),
                                             QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("Seeked"));
    signal << QVariant{0LL};
    EXPECT_TRUE(stranger.send(signal));
    EXPECT_TRUE(stranger.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.DBus")));
    proxy.signalChange(status);
    expectNoChange(player);
    QDBusConnection::disconnectFromBus(QStringLiteral("stranger"));
}

TEST_F(MprisPlayersTest, BrowsersCountOnlyWhenTheyAreIncludedAndOnce) {
    StandInPlayer firefox{QStringLiteral("firefox.instance_1_379")};
    StandInPlayer player{QStringLiteral("mpv")};
    firefox.play(playing, {{title, QStringLiteral("A meeting")}});
    player.play(paused, {{title, QStringLiteral("A song")}});
    waitForPlayer();
    EXPECT_EQ(asked(), "paused | A song |  |  | ~~A song~ | 0 | 0");
    players_.setIncludesBrowsers(true);
    waitForChange();
    EXPECT_EQ(asked(), "playing | A meeting |  |  | ~~A meeting~ | 0 | 0");
    StandInPlayer bridge{QStringLiteral("plasma-browser-integration")};
    bridge.play(playing, {{title, QStringLiteral("A film")}});
    waitForChange();
    firefox.signalSeeked(QVariant{0LL});
    EXPECT_EQ(asked(), "playing | A film |  |  | ~~A film~ | 0 | 0");
    EXPECT_EQ(firefox.questions, 1);
    players_.setIncludesBrowsers(false);
    waitForChange();
    EXPECT_EQ(asked(), "paused | A song |  |  | ~~A song~ | 0 | 0");
}

TEST_F(MprisPlayersTest, OneThatPlaysCountsBeforeOnesThatDoNotAndThenTheLastToChange) {
    StandInPlayer a{QStringLiteral("a")};
    StandInPlayer b{QStringLiteral("b")};
    StandInPlayer c{QStringLiteral("c")};
    waitUntil([&] { return changes_[music] == 3; });
    const auto say = [&](StandInPlayer& player, const QString& status, const char* text) {
        changes_[music] = 0;
        player.play(status, {{title, QString::fromLatin1(text)}});
        waitForChange();
    };
    say(a, playing, "A");
    say(b, playing, "B");
    say(c, paused, "C");
    EXPECT_EQ(asked(), "playing | B |  |  | ~~B~ | 0 | 0");
    say(a, playing, "A");
    EXPECT_EQ(asked(), "playing | A |  |  | ~~A~ | 0 | 0");
    say(a, stopped, "A");
    say(b, paused, "B");
    EXPECT_EQ(asked(), "paused | B |  |  | ~~B~ | 0 | 0");
    say(b, stopped, "B");
    say(c, QStringLiteral("Rewinding"), "C");
    EXPECT_EQ(asked(), "stopped");
}

TEST_F(MprisPlayersTest, AHungPlayerHoldsUpTheOthersOnceAndIsAskedAgainWhenItSpeaks) {
    StandInPlayer hung{QStringLiteral("a")};
    StandInPlayer other{QStringLiteral("b")};
    other.properties = {{QStringLiteral("PlaybackStatus"), stopped}};
    hung.isHung = true;
    waitUntil([&] { return changes_[music] == 2; });
    EXPECT_EQ(asked(), "stopped");
    EXPECT_EQ(asked(), "stopped");
    EXPECT_EQ(hung.questions, 1);
    hung.isHung = false;
    changes_[music] = 0;
    hung.signalChange({{QStringLiteral("Volume"), 0.5}});
    waitForChange();
    hung.play(playing, {{title, QStringLiteral("Back")}});
    EXPECT_EQ(asked(), "playing | Back |  |  | ~~Back~ | 0 | 0");
}

TEST_F(MprisPlayersTest, ATrackWithoutATitleGoesByItsFileWhenNoneIsSaidForAWhile) {
    StandInPlayer player{QStringLiteral("mpd")};
    waitForPlayer();
    player.play(playing, {{url, QStringLiteral("file:///m/01.%20A%20b%C3%BCro.flac")}});
    waitForChange();
    EXPECT_EQ(asked(), "stopped");
    waitForChange();
    const std::string byFile = "01. A büro |  |  | ~file:///m/01.%20A%20b%C3%BCro.flac~01. A büro~ | 0 | 0";
    EXPECT_EQ(asked(), "playing | " + byFile);
    player.properties.insert(QStringLiteral("PlaybackStatus"), paused);
    EXPECT_EQ(asked(), "paused | " + byFile);
    player.play(playing, {{title, QStringLiteral("Said")}});
    waitForChange();
    EXPECT_EQ(asked(), "playing | Said |  |  | ~~Said~ | 0 | 0");
    // The next one may again be about to say it.
    player.play(playing, {{url, QStringLiteral("/m/b")}});
    waitForChange();
    EXPECT_EQ(asked(), "stopped");
}

TEST_F(MprisPlayersTest, ACoverStaysWhenThePlayerTakesItBackWhileTheTrackPlays) {
    StandInPlayer player{QStringLiteral("mpv")};
    waitForPlayer();
    const auto cover = [&] {
        static_cast<void>(asked());
        return players_.artworkOf(music, "\n\nOne\n");
    };
    QVariantMap one{{title, QStringLiteral("One")}};
    player.play(playing, one);
    EXPECT_EQ(cover(), std::nullopt);
    one.insert(artUrl, QStringLiteral("file:///a.png"));
    player.play(playing, one);
    EXPECT_EQ(cover(), "file:///a.png");
    one.remove(artUrl);
    player.play(playing, one);
    EXPECT_EQ(cover(), "file:///a.png");
    EXPECT_EQ(players_.artworkOf(spotify, "\n\nOne\n"), std::nullopt);
    one.insert(artUrl, QStringLiteral("file:///b.png"));
    player.play(paused, one);
    EXPECT_EQ(cover(), "file:///b.png");
}

TEST_F(MprisPlayersTest, APlayerThatSaysNonsenseIsReadAsFarAsItGoes) {
    using Strings = QMap<QString, QString>;
    qDBusRegisterMetaType<Strings>();
    StandInPlayer player{QStringLiteral("mpv")};
    waitForPlayer();
    player.properties = {{QStringLiteral("PlaybackStatus"), playing},
                         {QStringLiteral("Metadata"), QVariantMap{{title, object(QStringLiteral("/t"))},
                                                                  {artist, QVariantList{1, QStringLiteral("x")}},
                                                                  {album, QVariantMap{{title, title}}},
                                                                  {trackId, QByteArray{"id"}},
                                                                  {length, QStringLiteral("180")},
                                                                  {url, true},
                                                                  {artUrl, 1}}},
                         {position, QVariantList{}}};
    EXPECT_EQ(asked(), "playing | /t |  |  | ~~/t~ | 0 | 0");
    for (const auto& metadata : {QVariant::fromValue(Strings{{title, title}}), QVariant{title}, QVariant{1.0}}) {
        player.properties.insert(QStringLiteral("Metadata"), metadata);
        EXPECT_EQ(asked(), "stopped");
    }
    player.properties.insert(QStringLiteral("PlaybackStatus"), 1);
    EXPECT_EQ(asked(), "No music player answered");
}

TEST_F(MprisPlayersTest, ARunThatIsDroppedIsSilentAndOneOfAnUnknownScriptFails) {
    StandInPlayer player{QStringLiteral("mpv")};
    waitForPlayer();
    EXPECT_EQ(written(answerTo("tell application \"Finder\" to quit")), "Could not compile the script");
    int answers = 0;
    for (const auto script : {MusicScripts::appleMusic(), MusicScripts::spotify(), std::string_view{"?"}}) {
        static_cast<void>(players_.run(script, [&](auto) { answers = -1; }));
        std::unique_ptr<ScriptRunner::Run> run;
        run = players_.run(script, [&](auto) {
            run.reset();
            ++answers;
        });
        waitUntil([&] { return run == nullptr; });
    }
    settle();
    EXPECT_EQ(answers, 3);
    // One whose player crashes under it.
    std::optional<StandInPlayer> crashing{QStringLiteral("crashing")};
    waitForChange();
    crashing->isHung = true;
    std::optional<ScriptRunner::Answer> got;
    player.properties = {{QStringLiteral("PlaybackStatus"), stopped}};
    const auto run = players_.run(MusicScripts::appleMusic(), [&](auto answer) { got = std::move(answer); });
    waitUntil([&] { return crashing->questions > 0; });
    crashing.reset();
    waitUntil([&] { return got.has_value(); });
    EXPECT_EQ(written(got.value()), "stopped");
}

TEST_F(MprisPlayersTest, ListensToPlayersAloneAndOnlyWhileSomebodyObserves) {
    const StandInPlayer player{QStringLiteral("mpv")};
    waitForPlayer();
    const auto rules = matchRules();
    EXPECT_FALSE(rules.isEmpty());
    for (const auto& rule : rules) {
        const bool isOfPlayers = rule.contains(QStringLiteral("':")) || rule.contains(QStringLiteral("arg0namespace="));
        EXPECT_TRUE(isOfPlayers) << rule.toStdString();
    }
    observers_.clear();
    EXPECT_FALSE(players_.isRunning(music));
    EXPECT_EQ(matchRules(), QStringList{});
    // Again, with a player that was there before; and whoever hears a change may end it all.
    observers_.push_back(players_.observe(music, [&] {
        observers_.clear();
        ++changes_[music];
    }));
    waitForChange();
    EXPECT_FALSE(players_.isRunning(music));
    EXPECT_EQ(matchRules(), QStringList{});
}

TEST_F(MprisPlayersTest, WithoutABusNothingPlays) {
    MprisPlayers nowhere{noBus()};
    const auto observer = nowhere.observe(music, [] { FAIL(); });
    std::optional<ScriptRunner::Answer> got;
    const auto run = nowhere.run(MusicScripts::appleMusic(), [&](auto answer) { got = std::move(answer); });
    waitUntil([&] { return got.has_value(); });
    EXPECT_FALSE(nowhere.isRunning(music));
}

} // namespace
} // namespace lumaro
