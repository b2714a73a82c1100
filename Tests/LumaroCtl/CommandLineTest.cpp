// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/CommandLine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace lumaro {
namespace {

// A device that gives and takes nothing.
struct DeadDevice : std::streambuf {
    int_type underflow() override { throw std::ios_base::failure{"dead"}; }
};

int runOn(const std::string& arguments, std::istream& in, std::ostream& out, std::ostream& err) {
    std::istringstream stream{"lumaroctl " + arguments};
    std::vector<std::string> words{std::istream_iterator<std::string>{stream}, {}};
    std::vector<char*> pointers(words.size());
    std::ranges::transform(words, pointers.begin(), [](auto& word) { return word.data(); });
    return runCommandLine(pointers, in, out, err);
}

struct Call {
    std::istringstream in;
    std::ostringstream outStream;
    std::ostringstream errStream;
    int status;
    std::string out;
    std::string err;

    explicit Call(const std::string& arguments, const std::string& input = "")
        : in{input}, status{runOn(arguments, in, outStream, errStream)}, out{outStream.str()}, err{errStream.str()} {}
    auto errorLines() const { return std::ranges::count(err, '\n'); }
};

const std::string board = R"({"v":1,"background":"sky","updatedAt":5,"items":[]})";
const std::string paint = R"({"op":"setBackground","background":"oat"})";
const std::string id = "00000000-0000-0000-0000-00000000000";
const std::string running =
    "{\"face\":\"running\",\"remaining\":60,\"progress\":0.5,\"endsAt\":121000,\"shared\":true,\"figure\":\"1:00\"}\n";
const std::string resting =
    "{\"face\":\"resting\",\"remaining\":0,\"progress\":0,\"endsAt\":null,\"shared\":false,\"figure\":\"0:00\"}\n";

std::string request(const std::string& ops, const std::string& more = "") {
    return R"({"board":)" + board + more + R"(,"ops":[)" + ops + "]}";
}

std::string answer(const std::string& tombstones = "", const std::string& rejected = "") {
    return R"({"board":{"v":1,"background":"oat","updatedAt":7,"items":[]},"tombstones":{)" + tombstones +
           R"(},"applied":[)" + paint + R"(],"rejected":[)" + rejected + "]}\n";
}

TEST(CommandLine, AnswersEachVerb) {
    const auto tilted = R"({"op":"upsert","item":{"kind":"calendar","center":{"x":0,"y":0},"rotationDegrees":99,"z":1,)"
                        R"("author":"a","createdAt":1,"updatedAt":1,"payload":{"slot":"a"},"id":")" +
                        id + "0\"}}";
    const std::vector<std::tuple<const char*, std::string, std::string>> cases = {
        {"board", R"( {"items":[], "updatedAt":5.0,"background":"sky"} )", board + "\n"},
        {"note", R"({"type":"doc","content":[{"type":"text","text":"Hi"},{"type":"new"}]})", "Hi\n\n"},
        {"pomodoro --at 61000", R"({"minutes":2,"phase":"block","startedAt":1000,"joinedAt":2000})", running},
        {"pomodoro --at -1", R"({"minutes":25,"phase":"resting"})", resting},
        {"spot --size 0x280.5", board, "{\"x\":800,\"y\":500}\n"},
        {"tilt 00000000-0000-0000-0000-000000000000", "", "0.25392137724700703\n"},
        {"tilt DEADBEEF-0123-4567-89AB-CDEF01234567", "", "3.65989126997731\n"},
        {"apply --now 007", request(paint, R"(,"tombstones":null)"), answer()},
        {"apply --now 7", request(paint, R"(,"tombstones":{")" + id + "A\":3}"), answer('"' + id + "a\":3")},
        {"apply --now 7", request(R"({"op":"upsert","item":{"kind":"new"}},)" + paint + "," + tilted),
         answer("", R"({"index":1,"reason":"invalidRotation"})")}};
    for (const auto& [arguments, in, out] : cases) {
        const Call call{arguments, in};
        EXPECT_EQ(call.out, out) << call.err;
        EXPECT_EQ(call.status, 0) << call.err;
        EXPECT_EQ(call.err, "");
    }
    EXPECT_NE((Call{"apply --now 010", request(paint)}.out.find(R"("updatedAt":10,)")), std::string::npos);
}

TEST(CommandLine, RefusesACommandLineThatMakesNoSense) {
    for (const char* arguments :
         {"", "paint", "apply", "apply --now soon", "apply --now 1.5", "apply --now 9223372036854776",
          "pomodoro --at 0x1", "board extra", "board --lines", "spot --size 280", "spot --size 280x280x",
          "spot --size -1x5", "spot --size nanx5", "tilt", "tilt x", "tilt --lines"}) {
        const Call call{arguments, board};
        EXPECT_EQ(call.status, 64) << arguments;
        EXPECT_EQ(call.out, "") << arguments;
        EXPECT_EQ(call.errorLines(), 1) << call.err;
    }
}

TEST(CommandLine, NamesWhatItDoesNotUnderstand) {
    const std::vector<std::pair<const char*, std::string>> cases = {
        {"paint", "lumaroctl: there is no verb \"paint\" (see --help)\n"},
        {"--wait 1 paint blue", "lumaroctl: there is no verb \"paint\" (see --help)\n"},
        {"put hat", "lumaroctl: there is no verb \"put hat\" (see --help)\n"},
        {"start --name=", "a name cannot be empty"},
        {"place share perhaps", "perhaps"}};
    for (const auto& [arguments, message] : cases) {
        const Call call{arguments};
        EXPECT_EQ(call.status, 64) << arguments;
        EXPECT_NE(call.err.find(message), std::string::npos) << call.err;
    }
    EXPECT_TRUE((Call{"--version"}.out.starts_with("lumaroctl ")));
    EXPECT_EQ((Call{"--version"}.status), 0);
    const Call endless{"put note -", std::string(40'000, 'x')};
    EXPECT_EQ(endless.status, 65);
    EXPECT_EQ(endless.err, "lumaroctl put: that is too long for a note\n");
}

TEST(CommandLine, NamesThePlaceThatCannotBeRead) {
    const auto twice = R"(,"tombstones":{")" + id + "A\":3,\"" + id + "a\":4}";
    const std::vector<std::tuple<const char*, std::string, std::string>> cases = {
        {"board", "", "board: $: "},
        {"board", R"({"background":"two\nlines","updatedAt":5,"items":[]})", "board: $.background: "},
        {"note", R"({"type":"x","attrs":{"two\nlines":1e400}})", "note: $.attrs.two"},
        {"pomodoro --at 0", R"({"minutes":1})", "pomodoro: $.phase: "},
        {"spot --size 1x1", board + "}", "spot: $: "},
        {"apply --now 7", request("7"), "apply: $.ops[0]: "},
        {"apply --now 7", request("", twice), "apply: $.tombstones." + id + "a: "}};
    for (const auto& [arguments, in, message] : cases) {
        const Call call{arguments, in};
        EXPECT_EQ(call.status, 65) << in;
        EXPECT_EQ(call.out, "") << in;
        EXPECT_TRUE(call.err.starts_with("lumaroctl " + message)) << call.err;
        EXPECT_EQ(call.errorLines(), 1) << call.err;
    }
}

TEST(CommandLine, TellsWhenAStreamFails) {
    DeadDevice device;
    std::ostream deadOut{&device};
    for (const char* arguments : {"board", "apply --now 0", "apply --now 0 --lines", "--help"}) {
        std::istringstream in{*arguments == 'a' ? request(paint) : board};
        std::ostringstream err;
        EXPECT_EQ(runOn(arguments, in, deadOut, err), 74) << arguments;
        std::istream deadIn{&device};
        std::ostringstream out;
        EXPECT_EQ(runOn(arguments, deadIn, out, err), *arguments == '-' ? 0 : 74) << arguments;
        EXPECT_EQ(std::ranges::count(err.str(), '\n'), *arguments == '-' ? 1 : 2) << err.str();
    }
}

TEST(CommandLine, AnswersEveryLineOfItsOwn) {
    const auto good = request(paint) + "\n";
    const auto lines = [](const std::string& in) { return Call{"apply --now 7 --lines", in}; };
    EXPECT_EQ(lines(good + "\n \t\r\n" + request(paint) + "\r\n" + request(paint)).out, answer() + answer() + answer());
    EXPECT_EQ(lines(good + "\n").status, 0);
    const auto call = lines(good + request(R"({"op":"zap"})") + "\n" + good);
    EXPECT_EQ(call.status, 65);
    const std::string error = "{\"error\":\"unknown value \\\"zap\\\"\",\"path\":\"$.ops[0].op\"}\n";
    EXPECT_EQ(call.out, answer() + error + answer());
}

} // namespace
} // namespace lumaro
