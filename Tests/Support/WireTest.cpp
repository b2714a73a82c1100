// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/Wire.h"

#include "LumaroCore/BoardModel/Payload.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <sstream>

namespace lumaro {
namespace {

using namespace std::string_literals;
using enum DecodeFault;
using Strokes = std::vector<InkStroke>;

constexpr Instant at(std::int64_t microseconds) {
    return Instant{Microseconds{microseconds}};
}

// The words of a text, between single blanks.
std::vector<std::string> words(const std::string& text) {
    std::istringstream stream{text};
    return {std::istream_iterator<std::string>{stream}, {}};
}

template <class T>
DecodeError errorOf(const std::string& text) {
    const auto read = Wire::decode<T>(text);
    return read ? DecodeError{tooLarge, "(no error)", ""} : read.error();
}

std::string filled(std::string pattern, const std::string& text) {
    return pattern.replace(pattern.find('@'), 1, text);
}

TEST(Wire, W2_RoundsToMillisecondsWithHalvesAwayFromZero) {
    const std::vector<std::int64_t> instants{499, 500, 1499, 1500, -499, -500, -1499, -1500, INT64_MAX, INT64_MIN};
    const std::vector<std::int64_t> rounded{0, 1, 1, 2, 0, -1, -1, -2, INT64_MAX / 1000, INT64_MIN / 1000};
    for (std::size_t i = 0; i < instants.size(); ++i) {
        PomodoroPayload timer;
        timer.startedAt = at(instants[i]);
        EXPECT_EQ(Wire::milliseconds(at(instants[i])), rounded[i]) << instants[i];
        EXPECT_EQ(Wire::truncatedToMilliseconds(at(instants[i])), at(rounded[i] * 1000)) << instants[i];
        EXPECT_EQ(Wire::decode<PomodoroPayload>(*Wire::encode(timer))->startedAt, at(rounded[i] * 1000));
    }
    EXPECT_EQ(Wire::date(-9223372036854775), at(-9223372036854775000));
    for (const auto count : {INT64_MAX, INT64_MIN, 9223372036854776, -9223372036854776})
        EXPECT_FALSE(Wire::date(count)) << count;
}

TEST(Instant, SaturatesAtTheEndsOfItsRange) {
    EXPECT_EQ(saturatingAdd(Instant::max(), Microseconds{1}), Instant::max());
    EXPECT_EQ(saturatingAdd(Instant::min(), Microseconds{-1}), Instant::min());
    EXPECT_EQ(saturatingAdd(Instant::max(), Microseconds::min()), at(-1));
    EXPECT_EQ(secondsBetween(at(1), at(-1'500'000)), -1.500001);
    EXPECT_NEAR(secondsBetween(Instant::min(), Instant::max()), 9.2e12, 0.1e12);
    EXPECT_NEAR(secondsBetween(Instant::max(), Instant::min()), -9.2e12, 0.1e12);
}

TEST(JsonReader, W10_W11_W12_TakesWholeNumbersNullsAndKeysHoweverTheyAreWritten) {
    PomodoroPayload expected;
    expected.minutes = 7000;
    expected.joinedAt = at(7'000'000);
    const auto text =
        R"( {"startedAt":null,"zz":{"phase":[1e400]},"m\u0069nutes":@,"phase" : "rest\u0069ng","joinedAt":)"s;
    for (const char* number : {"7000", "7000.0", "70000e-1", "0.07E+5", "7e3"})
        EXPECT_EQ(Wire::decode<PomodoroPayload>(filled(text, number) + number + "}"), expected) << number;
}

TEST(JsonReader, W6_W9_W11_NamesTheFaultAndPlaceOfABadValue) {
    const std::vector<std::pair<DecodeFault, const char*>> cases = {
        {wrongType, R"("minutes":7.5 "minutes":"7" "minutes":null "minutes":[] "startedAt":1.5 "startedBy":1)"},
        {malformed, R"("minutes":07 "minutes":7.)"},
        {outOfRange, R"("minutes":9223372036854775808 "minutes":-1e400)"},
        {outOfRange, R"("startedAt":9223372036854776 "startedAt":-9223372036854776 "startedAt":1e300)"},
        {invalidValue, R"("startedBy":"c" "startedBy":"")"},
        {duplicateKey,
         R"("phase":"block","minutes":1 "joinedAt":null,"joinedAt":null "startedAt":1,"startedA\u0074":1)"}};
    for (const auto& [fault, fields] : cases) {
        for (const auto& field : words(fields)) {
            const auto error = errorOf<PomodoroPayload>(R"({"phase":"block",)" + field + "}");
            EXPECT_EQ(error.path, "$." + field.substr(1, field.find('"', 1) - 1)) << field;
            EXPECT_EQ(error.fault, fault) << field << ' ' << error.message;
        }
    }
}

TEST(JsonReader, W7_W8_RefusesWhatIsNotJson) {
    const std::string rests =
        R"(,} 1} "a":1} ,"zz"} ,"zz":} ,zz:1} ,"zz":tru} ,"text":nul} ,"zz":nullx} ,"zz":01} ,"zz":NaN} ] )"
        R"(,"zz":[1,]} ,"zz":[1:2]} ,"zz":{"a":1,}} ,"zz":{"a"}} ,"zz":"a":1} ,"attrs":{"k":[1,]}} ,"content":[,]})";
    for (const auto& rest : words(rests)) EXPECT_FALSE(Wire::decode<PMNode>(R"({"type":"x")" + rest)) << rest;
    for (const char* text :
         {"", " ", "{", "}", "7", "[]", "{\"type\":\"a\nb\"}", "{'type':'x'}", R"({"type":"x","z":1 2})"})
        EXPECT_FALSE(Wire::decode<PMNode>(text)) << text;
    for (const auto& rest : {"}"s, "]"s, " {}"s, ","s, "1"s, R"("a")"s, "nul"s, "\0"s})
        EXPECT_EQ(errorOf<PMNode>(R"({"type":"x"})" + rest).fault, trailingContent) << rest;
    EXPECT_TRUE(Wire::decode<PMNode>("\t{\"type\":\"x\"}\r\n "));
}

TEST(JsonReader, W7_RefusesBadEscapesAndBadUtf8Everywhere) {
    for (const char* pattern : {R"({"type":"@"})", R"({"zz":"@","type":"x"})", R"({"@":1,"type":"x"})",
                                R"({"type":"x","attrs":{"k":"@"}})", R"({"type":"x","attrs":{"@":1}})"}) {
        for (const auto& escape : words(R"(\ud800 \udbffa \ud800\u0041 \ud800\ud800 \udc00 \x \u12 \u00zz \ud83c\n)"))
            EXPECT_EQ(errorOf<PMNode>(filled(pattern, escape)).fault, malformed) << filled(pattern, escape);
        for (const char* bytes : {"\xff", "\xc0\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xe2\x82", "\x80"})
            EXPECT_EQ(errorOf<PMNode>(filled(pattern, bytes)).fault, invalidUtf8);
    }
}

TEST(JsonReader, W7_ReadsATextNestedAThousandDeepAndNoDeeper) {
    const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    for (const char* pattern : {R"({"type":"x","zz":{"k":@}})", R"({"type":"x","attrs":{"k":@}})"}) {
        EXPECT_TRUE(Wire::decode<PMNode>(filled(pattern, nested(998)))) << pattern;
        EXPECT_EQ(errorOf<PMNode>(filled(pattern, nested(999))).fault, tooDeep) << pattern;
        EXPECT_EQ(errorOf<PMNode>(filled(pattern, nested(300000))).fault, tooDeep) << pattern;
    }
}

TEST(JsonReader, W17_ReadsStrokesInPairs) {
    EXPECT_EQ(*Wire::decode<Strokes>(R"([{"p":[1,2.5,-3e0,4],"s":2,"c":"ink"},{"c":"","s":0,"p":[]}])"),
              (Strokes{{"ink", 2, {{1, 2.5}, {-3, 4}}}, {"", 0, {}}}));
    EXPECT_EQ(errorOf<Strokes>(R"([{"c":"","s":0,"p":[]},{"c":"","s":0,"p":[1,2,3]}])"),
              (DecodeError{invalidValue, "$[1].p", "points come in pairs"}));
    EXPECT_EQ(errorOf<Strokes>(R"([{"c":"","s":0,"p":[1,"2"]}])").path, "$[0].p[1]");
}

TEST(JsonWriter, W1_EscapesWhatItMustAndNothingElse) {
    const auto text = "a/b\"\\\b\f\n\r\t\0\x1f\x7f\u2028é🌻"s;
    const auto json = *Wire::encode(pm::text(text));
    EXPECT_EQ(json, "{\"type\":\"text\",\"text\":\"a/b\\\"\\\\\\b\\f\\n\\r\\t\\u0000\\u001f\x7f\u2028é🌻\"}");
    EXPECT_EQ(Wire::decode<PMNode>(json)->text, text);
    EXPECT_EQ(Wire::decode<PMNode>(R"({"type":"","text":"\ud83c\udf3b\/\u0000"})")->text, "🌻/\0"s);
    for (const std::size_t size : {65400U, 65536U, 65600U, 300000U}) // about the size of the buffers that are kept
        EXPECT_EQ(Wire::decode<PMNode>(*Wire::encode(pm::text(std::string(size, 'x'))))->plainText().size(), size);
}

TEST(JsonWriter, W4_AnswersWithAFailureForWhatHasNoJson) {
    EXPECT_EQ(Wire::encode(Strokes{{"", std::nan(""), {}}}).error(), (EncodeError{EncodeFault::notFinite, "s"}));
    EXPECT_EQ(Wire::encode(Strokes{{"", 1, {{0, -HUGE_VAL}}}}).error(), (EncodeError{EncodeFault::notFinite, "p"}));
    auto node = pm::text("");
    for (const char* bytes : {"\xff", "\xed\xa0\x80", "\xe2\x82"}) {
        EXPECT_EQ(Wire::encode(pm::text(bytes)).error().fault, EncodeFault::invalidUtf8);
        node.attrs = PMAttributes{{bytes, {}}};
        EXPECT_EQ(Wire::encode(node).error().fault, EncodeFault::invalidUtf8);
    }
    PMValue value;
    for (int depth = 3; depth <= maxJsonDepth; ++depth) value = PMValue{PMValue::Array{std::move(value)}};
    node.attrs = PMAttributes{{"k", value}};
    EXPECT_EQ(Wire::decode<PMNode>(*Wire::encode(node)), node);
    node.attrs = PMAttributes{{"k", PMValue{PMValue::Array{value}}}};
    EXPECT_EQ(Wire::encode(node).error().fault, EncodeFault::tooDeep);
}

} // namespace
} // namespace lumaro
