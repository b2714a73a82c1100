// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/CoupleToken.h"

#include "LumaroCore/Protocol/CoupleEndpoints.h"

#include <gtest/gtest.h>

#include <sstream>

namespace lumaro {
namespace {

TEST(CoupleToken, P6_TakesTheFourPiecesAndTheSpaceAroundThem) {
    for (const char* text :
         {"lm1.q3-m7.b.s3cret", "  lm1.q3-m7.b.s3cret\r\n", "\u00a0\u2003lm1.q3-m7.b.s3cret\u2028\u3000\t"}) {
        const auto token = CoupleToken::parse(text);
        ASSERT_TRUE(token) << text;
        EXPECT_EQ(*token, (CoupleToken{"lm1.q3-m7.b.s3cret", "q3-m7", PartnerID::b, "s3cret"}));
        EXPECT_EQ(token->authorizationHeaderValue(), "Bearer lm1.q3-m7.b.s3cret");
    }
}

TEST(CoupleToken, P6_JudgesEachCharacterByUnicode) {
    const std::vector<std::pair<const char*, bool>> cases = {{"lm1.é.a.ß", true},      // lower case
                                                             {"lm1.漢字.a.קוד", true}, // without case
                                                             {"lm1.٣.a.७", true},      // digits of other scripts
                                                             {"lm1.c.a.É", false},     // upper case
                                                             {"lm1.Ω.a.s", false},
                                                             {"lm1.c.a.s-s", false}, // a hyphen in the secret
                                                             {"lm1.c.a.Ⅳ", false},
                                                             {"lm1.e\u0301.a.s", false}, // a mark of its own
                                                             {"lm1.c.a.\xff", false},    // not UTF-8
                                                             {"lm1.c\xed\xa0\x80.a.s", false},
                                                             {"lm1..a.s", false},
                                                             {"lm1.c.a.", false},
                                                             {"lm1.c.c.s", false},
                                                             {"LM1.c.a.s", false},
                                                             {"lm1.c.a", false},
                                                             {"lm1.c.a.s.s", false},
                                                             {"", false}};
    for (const auto& [text, isToken] : cases) EXPECT_EQ(CoupleToken::parse(text).has_value(), isToken) << text;
}

TEST(CoupleToken, RefusesWithTheTrimmedText) {
    const auto refused = CoupleToken::parse("\n lm1.c.a \xff\t");
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().errorDescription(), "Not a Lumaro join token: lm1.c.a \xff");
    EXPECT_EQ(CoupleToken::parse(" \u2029 ").error().errorDescription(), "Not a Lumaro join token: ");
}

TEST(CoupleToken, P7_ShowsItselfWithoutItsSecret) {
    const auto token = CoupleToken::parse("lm1.q3.a.zzz").value_or(CoupleToken{});
    std::ostringstream out;
    out << token;
    EXPECT_EQ(out.str(), "lm1.q3.a.••••");
    EXPECT_EQ(token.description(), out.str());
    EXPECT_EQ(token.redacted(), out.str());
}

TEST(CoupleEndpoints, P1_P2_P3_AppendsEachPartOfThePathAsOne) {
    const CoupleEndpoints plain{"https://board.example", "q3-m7"};
    const auto mediaId = UUID::parse("DEADBEEF-0123-4567-89AB-CDEF01234567").value_or(UUID{});
    const std::vector<std::pair<std::string, std::string>> cases = {
        {plain.webSocket(), "wss://board.example/couples/q3-m7/ws"},
        {plain.snapshot(), "https://board.example/couples/q3-m7/snapshot"},
        {plain.calendarConnect(), "https://board.example/couples/q3-m7/calendar/connect"},
        {plain.media(mediaId), "https://board.example/couples/q3-m7/media/deadbeef-0123-4567-89ab-cdef01234567"},
        {CoupleEndpoints{"HTTP://[::1]:7700/api/", "c"}.webSocket(), "ws://[::1]:7700/api/couples/c/ws"},
        {CoupleEndpoints{"httpx://x", "c"}.webSocket(), "httpx://x/couples/c/ws"},
        {CoupleEndpoints{"https://x/api?tenant=/1#top", "c"}.snapshot(),
         "https://x/api/couples/c/snapshot?tenant=/1#top"},
        {CoupleEndpoints{"http://x", "é/%.?"}.partner(), "http://x/couples/%C3%A9%2F%25.%3F/partner"},
        {urlWithPath("http://x", {"-._~!$&'()*+,;=:@", " \"#[]"}), "http://x/-._~!$&'()*+,;=:@/%20%22%23%5B%5D"}};
    for (const auto& [url, expected] : cases) EXPECT_EQ(url, expected);
}

} // namespace
} // namespace lumaro
