// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/CoverAddress.h"
#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

constexpr auto spotify = MusicSource::spotify;

struct MusicTest : testing::Test, AppFixture {
    void SetUp() override { goOnBoard(); }
    void settle(Seconds span = Seconds{3}) {
        for (double passed = 0; passed < span.count(); passed += 0.05) {
            pass(Seconds{0.05});
            players.answerAll();
        }
        background.runAll();
    }
    void play(std::string title, std::optional<std::string> artwork = std::nullopt) {
        players.play(spotify, FakePlayers::playing(std::move(title), "Nina", 215'000), std::move(artwork));
        settle(Seconds{0.6});
    }
    void answer(int status, std::string body = "") {
        ASSERT_TRUE(http.answer(HttpResponse{status, std::move(body)}));
        background.runAll();
        settle(Seconds{0.5});
    }
    void partnerPlays(std::optional<std::string> artwork) {
        NowPlaying playing;
        playing.isPlaying = true;
        playing.sampledAt = clock.now();
        playing.artworkURL = std::move(artwork);
        rooms.say(
            ServerMessage::Presence{PartnerID::b, playing, std::nullopt, Activity::idle, std::nullopt, std::nullopt});
        background.runAll();
    }
    const std::optional<NowPlaying>& told() const { return rooms.presences.back().nowPlaying; }
    std::string cover(std::string_view name) const {
        return CoverAddress::inRoom({app->serverURL(), "q3m7xk2p"}, FakeCoverMaker{}.idOf(name));
    }
    const HttpRequest& asked() const { return http.requests.back(); }
};

TEST_F(MusicTest, ListensToNothingUntilThePersonSaysYesAndTellsTheRoomWhenTheySayNo) {
    players.play(spotify, FakePlayers::playing("Song"));
    settle();
    EXPECT_FALSE(players.isObserved());
    EXPECT_EQ(state().musicConsent, Consent::notAsked);
    app->music().share(true);
    settle(Seconds{0.6});
    EXPECT_EQ(told()->title, "Song");
    rebuild();
    EXPECT_EQ(state().musicConsent, Consent::yes);
    goOnBoard();
    settle(Seconds{0.6});
    EXPECT_EQ(told()->title, "Song");
    app->music().share(false);
    pass(Seconds{0.3});
    EXPECT_EQ(told(), std::nullopt);
    players.tell(spotify);
    settle();
    EXPECT_EQ(told(), std::nullopt);
    EXPECT_FALSE(players.isObserved());
}

TEST_F(MusicTest, TellsTheRoomWhatItCouldNotKnowByItself) {
    app->music().share(true);
    play("Song");
    const auto before = rooms.presences.size();
    for (int i = 0; i < 4; ++i) {
        sleeper.advance(Seconds{1});
        players.running[spotify].answer =
            FakePlayers::playing("Song", "Nina", 215'000, secondsBetween(told()->sampledAt, clock.now()));
        players.tell(spotify);
        settle(Seconds{0.6});
    }
    EXPECT_EQ(rooms.presences.size(), before);
    players.play(spotify, FakePlayers::playing("Song", "Nina", 215'000, 100));
    settle(Seconds{0.6});
    EXPECT_EQ(told()->progressMs, 100'000);
}

TEST_F(MusicTest, SendsACataloguesCoverAsItIs) {
    app->music().share(true);
    play("Song", "https://open.spotify.com/image/ab67616d00001e025b2f2d8c737ed5a780116ba9");
    EXPECT_EQ(told()->artworkURL, "https://i.scdn.co/image/ab67616d0000b2735b2f2d8c737ed5a780116ba9");
    EXPECT_EQ(asked().url, *told()->artworkURL);
    EXPECT_TRUE(asked().headers.empty());
    answer(200, "picture");
    EXPECT_TRUE(state().ownCover);
}

TEST_F(MusicTest, GivesAnyOtherCoverToTheRoomOnceAndShowsItAtHome) {
    app->music().share(true);
    play("Song", "file:picture");
    EXPECT_EQ(asked().method, "PUT");
    EXPECT_EQ(asked().url, cover("picture"));
    answer(503);
    settle(Seconds{2.5});
    answer(201);
    EXPECT_EQ(told()->artworkURL, cover("picture"));
    EXPECT_TRUE(state().ownCover);
    play("Next of the album", "file:picture");
    EXPECT_EQ(told()->artworkURL, cover("picture"));
    EXPECT_EQ(http.requests.size(), 2U);

    play("Elsewhere", "https://i.ytimg.com/vi/x.jpg");
    EXPECT_EQ(asked().url, "https://i.ytimg.com/vi/x.jpg");
    EXPECT_EQ(asked().maxBodyBytes, Covers::maxPictureBytes);
    EXPECT_TRUE(asked().headers.empty());
    answer(200, "picture of a film");
    answer(201);
    EXPECT_EQ(told()->artworkURL, cover("picture of a film"));
}

TEST_F(MusicTest, FindsNoCoverWhereThereIsNoneToBeTrusted) {
    app->music().share(true);
    for (const auto* const shown :
         {"file:/etc/shadow", "https://127.0.0.1/x.jpg", "http://i.ytimg.com/x", "nonsense"}) {
        play(shown, shown);
        settle();
        EXPECT_EQ(http.requests.size(), 0U) << shown;
        EXPECT_EQ(told()->artworkURL, std::nullopt) << shown;
    }
    play("refused", "file:picture");
    answer(413);
    EXPECT_EQ(told()->artworkURL, std::nullopt);
}

TEST_F(MusicTest, WaitsForACoverThatComesLateAndLooksOnTheWebOnlyWhereItMay) {
    app->music().share(true);
    play("Late");
    players.running[spotify].artwork = "file:picture";
    settle();
    EXPECT_EQ(asked().url, cover("picture"));
    answer(201);
    const auto nextSong = [&](std::string title, std::string key) {
        auto answer = FakePlayers::playing(std::move(title), "Jack Johnson", 210'000);
        std::get<ScriptValue::List>(answer.value)[4] = {std::move(key)};
        players.play(spotify, std::move(answer));
        settle();
    };
    const auto before = http.requests.size();
    nextSong("Upside Down", "local");
    EXPECT_EQ(http.requests.size(), before);
    nextSong("Winterchild", "spotify:track:0heJlRkloNhkrBU9ROnM9Y");
    EXPECT_TRUE(asked().url.starts_with("https://open.spotify.com/oembed?url="));
    answer(200, R"({"thumbnail_url":"https://i.scdn.co/image/ab67616d0000b2735b2f2d8c737ed5a780116ba9"})");
    EXPECT_EQ(told()->artworkURL, "https://i.scdn.co/image/ab67616d0000b2735b2f2d8c737ed5a780116ba9");
    answer(404); // of the cover itself
    app->music().lookForCovers(true);
    nextSong("Upside Down", "local");
    EXPECT_TRUE(asked().url.starts_with("https://itunes.apple.com/search?term=Jack+Johnson+Upside+Down&"));
    answer(429);
    EXPECT_EQ(told()->artworkURL, std::nullopt);
    nextSong("Silence of ten seconds", "other");
    http.answer(std::unexpected(HttpFailure{"no answer in time"}));
    settle();
    EXPECT_EQ(told()->artworkURL, std::nullopt);
}

TEST_F(MusicTest, ShowsThePartnersCoverAndGivesTheTokenToItsOwnServerAlone) {
    const auto theirs =
        "https://another-name.example/couples/q3m7xk2p/covers/" + FakeCoverMaker{}.idOf("x").lowerString();
    partnerPlays(theirs);
    EXPECT_EQ(asked().url, cover("x"));
    EXPECT_EQ(asked().headers.size(), 1U);
    EXPECT_EQ(asked().maxBodyBytes, Covers::maxPictureBytes);
    answer(200, "<html>not a cover</html>");
    EXPECT_FALSE(state().partnerCover);
    rooms.listener->opened({});
    rooms.say(ServerMessage::Welcome{});
    EXPECT_EQ(http.open(), 0U);
    ServerMessage::Welcome welcome;
    welcome.roster = PartnerSet::both();
    rooms.say(std::move(welcome));
    partnerPlays(theirs);
    answer(200, "picture");
    EXPECT_TRUE(state().partnerCover);
    const auto requests = http.requests.size();
    for (const auto* const url :
         {"https://evil.example/x.jpg", "http://127.0.0.1:631/", "file:///etc/passwd", "data:image/png;base64,AAAA",
          "https://board.example/couples/other/covers/0f8fad5b-d9cb-469f-a165-70867728950e"}) {
        partnerPlays(url);
        EXPECT_EQ(http.requests.size(), requests) << url;
        EXPECT_FALSE(state().partnerCover) << url;
    }
    partnerPlays("https://i.scdn.co/image/x");
    EXPECT_TRUE(asked().headers.empty());
    partnerPlays(theirs);
    EXPECT_TRUE(state().partnerCover); // from the cache
}

TEST_F(MusicTest, SendsNoCoverOfABoardThatWasLeft) {
    app->music().share(true);
    play("Song", "file:picture");
    answer(201);
    EXPECT_TRUE(told()->artworkURL);
    app->leaveBoard();
    settle();
    EXPECT_EQ(state().ownPresence.nowPlaying->artworkURL, std::nullopt);
    EXPECT_EQ(state().ownPresence.nowPlaying->title, "Song");
}

} // namespace
} // namespace lumaro
