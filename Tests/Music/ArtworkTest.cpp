// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/ArtworkLookUp.h"
#include "LumaroCore/Music/CoverAddress.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

constexpr std::string_view picture = "https://i.scdn.co/image/ab67616d0000b2735b2f2d8c737ed5a780116ba9";

TEST(CoverAddressTest, TrustsTheCataloguesHostsAndNothingThatLooksLikeThem) {
    for (const std::string_view url : {picture, std::string_view{"https://image-cdn-ak.spotifycdn.com/image/x"},
                                       std::string_view{"https://is1-ssl.mzstatic.com/image/thumb/512x512bb.jpg"}}) {
        EXPECT_TRUE(CoverAddress::isOfCatalogue(url)) << url;
    }
    for (const auto* const url :
         {"http://i.scdn.co/image/x", "https://i.scdn.co.evil.example/image/x", "https://evil.example/i.scdn.co",
          "https://i.scdn.co@127.0.0.1/x", "https://i.scdn.co:8443/x", "https://127.0.0.1\\.mzstatic.com/x",
          "https://.mzstatic.com:1/", "https://u@a.mzstatic.com/x", "https://i.scdn.co", "https://i.scdn.co\n/x",
          "file:///etc/passwd", ""}) {
        EXPECT_FALSE(CoverAddress::isOfCatalogue(url)) << url;
    }
    EXPECT_FALSE(CoverAddress::isOfCatalogue("https://i.scdn.co/" + std::string(5000, 'x')));
}

TEST(CoverAddressTest, NamesACoverOfOnesOwnRoomOnAnyServer) {
    const auto id = *UUID::parse("0f8fad5b-d9cb-469f-a165-70867728950e");
    const auto url = CoverAddress::inRoom({"https://board.example/base", "q3m7xk2p"}, id);
    EXPECT_EQ(url, "https://board.example/base/couples/q3m7xk2p/covers/0f8fad5b-d9cb-469f-a165-70867728950e");
    EXPECT_EQ(CoverAddress::idInRoom(url, "q3m7xk2p"), id);
    EXPECT_EQ(CoverAddress::idInRoom(url, "other"), std::nullopt);
    EXPECT_EQ(CoverAddress::idInRoom(url + "/..", "q3m7xk2p"), std::nullopt);
    EXPECT_EQ(
        CoverAddress::idInRoom("file://x/couples/q3m7xk2p/covers/0f8fad5b-d9cb-469f-a165-70867728950e", "q3m7xk2p"),
        std::nullopt);
}

TEST(CoverAddressTest, LetsASenderFetchFromNamedHostsOfTheNetworkAtLargeAlone) {
    EXPECT_TRUE(CoverAddress::mayBeFetched("https://i.ytimg.com/vi/x/hqdefault.jpg"));
    for (const auto* const url :
         {"http://i.ytimg.com/x", "https://127.0.0.1/x", "https://[::1]/x", "https://localhost/x",
          "https://printer.local/x", "https://router/x", "https://2130706433/x", "https://host.internal/x",
          "https://host:443/x", "https://user@host.com/x"}) {
        EXPECT_FALSE(CoverAddress::mayBeFetched(url)) << url;
    }
}

TEST(CoverAddressTest, AsksForTheSizeThatIsShown) {
    EXPECT_EQ(CoverAddress::atOurSize("https://i.scdn.co/image/ab67616d00001e025b2f2d8c737ed5a780116ba9"), picture);
    EXPECT_EQ(CoverAddress::atOurSize("https://open.spotify.com/image/ab67616d000048515b2f2d8c737ed5a780116ba9"),
              picture);
    EXPECT_EQ(CoverAddress::atOurSize("http://is1.mzstatic.com/image/thumb/a/100x100bb.png"),
              "https://is1-ssl.mzstatic.com/image/thumb/a/512x512bb.png");
    for (const auto* const url :
         {"https://i.scdn.co/image/ab67616d00001e02short", "https://a.mzstatic.com/x/cover.jpg",
          "https://a.mzstatic.com/x/100xbb.jpg", "https://evil.example/100x100bb.jpg", "nonsense"}) {
        EXPECT_EQ(CoverAddress::atOurSize(url), url);
    }
}

TEST(ArtworkLookUpTest, AsksSpotifyAboutItsOwnTracksInWhateverFormPlayersNameThem) {
    const auto asked = [](std::string key, MusicSource source = MusicSource::spotify) {
        return ArtworkLookUp::oEmbedURL({}, {source, std::move(key), "t", "a"});
    };
    constexpr auto url =
        "https://open.spotify.com/oembed?url=https%3A%2F%2Fopen.spotify.com%2Ftrack%2F0heJlRkloNhkrBU9ROnM9Y";
    EXPECT_EQ(asked("/com/spotify/track/0heJlRkloNhkrBU9ROnM9Y\n\nt\na"), url);
    EXPECT_EQ(asked("spotify:track:0heJlRkloNhkrBU9ROnM9Y\n\nt\na"), url);
    EXPECT_EQ(asked("/1\nhttps://open.spotify.com/track/0heJlRkloNhkrBU9ROnM9Y?si=abc\nt\na"), url);
    EXPECT_EQ(asked("spotify:local:a:b:c:1\nhttps://open.spotify.com/local/a\nt\na"), std::nullopt);
    EXPECT_EQ(asked("spotify:track:0heJlRkloNhk\"rBU9ROn\n\nt\na"), std::nullopt);
    EXPECT_EQ(asked("spotify:track:0heJlRkloNhkrBU9ROnM9Y", MusicSource::appleMusic), std::nullopt);
}

TEST(ArtworkLookUpTest, TakesFromOEmbedOnlyWhatLiesInTheCatalogue) {
    EXPECT_EQ(
        ArtworkLookUp::artworkInOEmbed(
            R"({"html":"<iframe>","width":null,"title":"Winterchild","thumbnail_url":"https://image-cdn-ak.spotifycdn.com/image/ab67616d00001e021b5f2d8c737ed5a780116ba9"})"),
        "https://image-cdn-ak.spotifycdn.com/image/ab67616d0000b2731b5f2d8c737ed5a780116ba9");
    for (const auto* const body : {R"({"title":"no picture"})", R"({"thumbnail_url":null})", R"({"thumbnail_url":7})",
                                   R"({"thumbnail_url":"https://evil.example/x"})", "<html>", "", "[]"}) {
        EXPECT_EQ(ArtworkLookUp::artworkInOEmbed(body), std::nullopt) << body;
    }
}

TEST(ArtworkLookUpTest, SearchesTheWordsAndTakesTheSongBeyondDoubt) {
    const auto query = [](std::string title, std::string artist, std::int64_t durationMs = 210'000) {
        return ArtworkQuery{MusicSource::appleMusic, "key", std::move(title), std::move(artist), durationMs};
    };
    EXPECT_EQ(ArtworkLookUp::searchURL({}, query("Où es-tu? (Live)", "Zoé & Co"), "de"),
              "https://itunes.apple.com/search?term=Zo%C3%A9+%26+Co+O%C3%B9+es-tu%3F&media=music&entity=song&limit=5"
              "&country=de&lang=en_us");
    EXPECT_EQ(ArtworkLookUp::searchURL({}, query("", "a"), "de"), std::nullopt);
    constexpr std::string_view body =
        R"json({"resultCount":2,"results":[
            {"trackName":"Upside Down (Karaoke Hits)","artistName":"The Others","artworkUrl100":"https://a.mzstatic.com/w/100x100bb.jpg","trackTimeMillis":210743},
            {"kind":"song","trackName":"Upside Down","artistName":"Jack Johnson","artworkUrl100":"https://is1-ssl.mzstatic.com/image/a/100x100bb.jpg","trackTimeMillis":210743}]})json";
    constexpr auto found = "https://is1-ssl.mzstatic.com/image/a/512x512bb.jpg";
    const auto in = [&](const ArtworkQuery& song) { return ArtworkLookUp::artworkInSearch(body, song); };
    EXPECT_EQ(in(query("UPSIDE DOWN - Remastered 2011", "Jack Johnson & Friends")), found);
    EXPECT_EQ(in(query("Úpside Down [Live]", "jack johnson", 0)), found);
    EXPECT_EQ(in(query("Upside Down", "Diana Ross")), std::nullopt);
    EXPECT_EQ(in(query("Upside", "Jack Johnson")), std::nullopt);
    EXPECT_EQ(in(query("Upside Down", "Jack Johnson", 300'000)), std::nullopt);
    for (
        const auto* const nothing :
        {R"({"resultCount":0,"results":[]})", "<html>", R"({"results":[{"trackName":null}]})",
         R"({"results":[{"trackName":"Upside Down","artistName":"Jack Johnson","artworkUrl100":"https://evil.example/100x100bb.png"}]})"}) {
        EXPECT_EQ(ArtworkLookUp::artworkInSearch(nothing, query("Upside Down", "Jack Johnson")), std::nullopt)
            << nothing;
    }
}

} // namespace
} // namespace lumaro
