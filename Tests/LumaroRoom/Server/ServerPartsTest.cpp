// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Support/JsonWriter.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Server/CommandLine.h"
#include "LumaroRoom/Server/IpAddress.h"
#include "LumaroRoom/Server/Router.h"
#include "LumaroRoom/Server/TokenBucket.h"
#include "LumaroRoom/Server/Url.h"
#include "LumaroRoom/Server/Weather.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

TEST(IpAddressTest, LimitsCountAnAddressOrANetworkOfVersionSix) {
    for (const auto& [text, origin] : {std::pair{"192.0.2.7", "192.0.2.7"},
                                       {"::ffff:192.0.2.7", "192.0.2.7"},
                                       {"2001:db8:1:2:3:4:5:6", "2001:db8:1:2::/64"},
                                       {"fe80::1%eth0", "fe80::/64"}}) {
        EXPECT_EQ(IpAddress::parse(text).value().origin(), origin);
    }
    for (const auto* text : {"192.0.2", "192.0.2.7%eth0", "%eth0"}) EXPECT_FALSE(IpAddress::parse(text)) << text;
}

TEST(IpAddressTest, ARangeHoldsWhatBeginsAlike) {
    struct Case {
        const char *range, *address;
        bool isIn;
    };
    for (const auto& [range, address, isIn] : {Case{"10.0.0.0/8", "10.255.0.1", true},
                                               {"192.0.2.128/25", "192.0.2.129", true},
                                               {"192.0.2.128/25", "192.0.2.127", false},
                                               {"0.0.0.0/0", "2001:db8::1", false},
                                               {"2001:db8::/33", "2001:db8:7fff::1", true},
                                               {"2001:db8::/33", "2001:db8:8000::1", false}}) {
        EXPECT_EQ(IpRange::parse(range).value().contains(IpAddress::parse(address).value()), isIn) << range << address;
    }
    for (const auto* text : {"10.0.0.0/33", "10.0.0.0/", "10.0.0.0/8x", "::/129", "host/8"}) {
        EXPECT_FALSE(IpRange::parse(text)) << text;
    }
}

TEST(IpAddressTest, OnlyTrustedProxiesSayWhoTheClientIs) {
    const std::vector trusted{IpRange::parse("10.0.0.0/8").value()};
    struct Case {
        const char *peer, *forwardedFor, *client;
    };
    for (const auto& [peer, forwardedFor, client] : {Case{"192.0.2.1", "203.0.113.9", "192.0.2.1"},
                                                     {"10.0.0.1", "", "10.0.0.1"},
                                                     {"10.0.0.1", "203.0.113.9", "203.0.113.9"},
                                                     {"10.0.0.1", "1.2.3.4, 203.0.113.9, 10.0.0.2", "203.0.113.9"},
                                                     {"10.0.0.1", "10.0.0.3,10.0.0.2", "10.0.0.3"},
                                                     {"10.0.0.1", "203.0.113.9, nonsense", "10.0.0.1"}}) {
        EXPECT_EQ(clientAddress(IpAddress::parse(peer).value(), forwardedFor, trusted).text(), client) << forwardedFor;
    }
}

TEST(UrlTest, TakesApartWhatItsOriginIs) {
    for (const auto& [text, origin, target] : {std::tuple{"https://Board.Example/", "https://board.example", "/"},
                                               {"https://board.example:443", "https://board.example", "/"},
                                               {"http://[::1]:7700/a/b?c=d", "http://[::1]:7700", "/a/b?c=d"},
                                               {"http://[::1]?q", "http://[::1]", "/?q"}}) {
        const auto url = Url::parse(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->origin(), origin);
        EXPECT_EQ(url->target, target);
    }
    for (const auto* text :
         {"board.example", "ftp://a", "http://", "http://a:0", "http://a:70000", "http://me@a", "null", "http://a:8:9",
          "http://::1", "http://[a]", "http://[::1", "http://a\r\nb", "http://\xc3\xa4"}) {
        EXPECT_FALSE(Url::parse(text)) << text;
    }
}

TEST(RouterTest, PathsAreMatchedWhole) {
    EXPECT_EQ(routeOf("GET", "/couples/abc/media/def"), (Routing{RouteMatch{Route::getMedia, "abc", "def"}}));
    EXPECT_EQ(routeOf("DELETE", "/couples/abc/partner"), (Routing{RouteMatch{Route::releasePartner, "abc", ""}}));
    EXPECT_EQ(routeOf("POST", "/couples/abc/partner"), (Routing{WrongMethod{"GET, DELETE"}}));
    for (const auto* path : {"", "/", "couples", "/couples/", "/couples//ws", "/couples/abc/ws/", "/couples/abc/wsx",
                             "//couples", "/for/", "/healthz/x"}) {
        EXPECT_EQ(routeOf("GET", path), Routing{NoSuchPath{}}) << path;
    }
}

TEST(TokenBucketTest, ABurstIsFreeAndWhatFollowsKeepsThePace) {
    using namespace std::chrono_literals;
    const TokenBucket::Clock::time_point start{};
    TokenBucket bucket{50, 3, start};
    for (int i = 0; i < 3; ++i) EXPECT_EQ(bucket.take(start), 0s);
    EXPECT_EQ(bucket.take(start), 20ms);
    EXPECT_EQ(bucket.take(start + 20ms), 20ms);
    EXPECT_EQ(bucket.take(start + 60ms), 0s);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(bucket.take(start + 1h), 0s) << "no more than the burst is saved";
    EXPECT_GT(bucket.take(start + 1h), 0s);
}

// A board has more to its JSON than its fields. This file does not see that, and must not write a board without it:
// with "Support/JsonCodec.h" it would, and the linker might take its `Wire::encode` for every other file's.
template <class T>
concept IsWritten = requires(JsonWriter& writer, const T& value) { writeJson(writer, value); };
static_assert(IsWritten<Point> && !IsWritten<Board> && !IsWritten<BoardItem>);

std::expected<Command, std::string> parsed(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "lumaro-room");
    std::vector<char*> pointers;
    for (auto& argument : arguments) pointers.push_back(argument.data());
    return parseCommandLine(pointers);
}

TEST(CommandLineTest, FlagsAndEnvironmentMakeTheConfiguration) {
    ::setenv("LUMARO_ROOM_BURST", "7", 1);                              // NOLINT(concurrency-mt-unsafe)
    ::setenv("LUMARO_ROOM_TRUSTED_PROXIES", "10.0.0.0/8,192.0.2.1", 1); // NOLINT(concurrency-mt-unsafe)
    const auto command = parsed({"--listen", "[::1]:0", "--public-url", "https://board.example/", "--threads", "3",
                                 "--window-page", "https://city.example/view?of=all", "--window-key", "k1"});
    ::unsetenv("LUMARO_ROOM_BURST");           // NOLINT(concurrency-mt-unsafe)
    ::unsetenv("LUMARO_ROOM_TRUSTED_PROXIES"); // NOLINT(concurrency-mt-unsafe)
    ASSERT_TRUE(command) << command.error();
    const auto& config = std::get<ServeCommand>(*command).config;
    EXPECT_EQ(config.address, "::1");
    EXPECT_EQ(config.port, 0);
    EXPECT_EQ(config.publicURL, "https://board.example");
    EXPECT_EQ(config.threads, 3U);
    EXPECT_EQ(config.limits.messageBurst, 7);
    EXPECT_EQ(config.windowKey, (WindowKey{"https://city.example/view?of=all", "k1"}));
    ASSERT_EQ(config.trustedProxies.size(), 2U);
}

TEST(CommandLineTest, WhatMakesNoSenseIsRefusedInOneLine) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--nonsense"},
                                                      {"--listen", "127.0.0.1:70000"},
                                                      {"--public-url", "board.example"},
                                                      {"--database", "postgresql://host/db"},
                                                      {"--trusted-proxies", "10.0.0.0/99"},
                                                      {"--threads", "0"},
                                                      {"--burst", "many\nlines"},
                                                      {"--tls-cert", "/dev/null"},
                                                      {"--window-page", "https://city.example"},
                                                      {"--window-key", "secret"},
                                                      {"--window-page", "https://a", "--window-key", "secret two"},
                                                      {"--window-page", "http://city.example", "--window-key", "k"},
                                                      {"backup"},
                                                      {"check-setup", "board.example"},
                                                      {"check", "more"}}) {
        const auto command = parsed(arguments);
        ASSERT_FALSE(command) << arguments.front();
        EXPECT_EQ(command.error().find('\n'), std::string::npos);
        EXPECT_EQ(command.error().find("secret"), std::string::npos);
    }
}

TEST(WeatherTest, PositionsAreRoundedAwayFromZero) {
    for (const auto& [latitude, longitude, query] : {std::tuple{"52.5163", "13.3777", "latitude=52.52&longitude=13.38"},
                                                     {"-0.005", "0.004", "latitude=-0.01&longitude=0"},
                                                     {"-90", "180", "latitude=-90&longitude=180"}}) {
        const auto position = positionIn(latitude, longitude);
        ASSERT_TRUE(position);
        EXPECT_EQ(queryOf(*position, "latitude", "longitude"), query);
    }
    for (const auto& [latitude, longitude] :
         {std::pair{"90.01", "0"}, {"0", "-180.1"}, {"nan", "0"}, {"", "0"}, {"1x", "0"}, {"1e400", "0"}}) {
        EXPECT_FALSE(positionIn(latitude, longitude)) << latitude << "," << longitude;
    }
}

} // namespace
} // namespace lumaro
