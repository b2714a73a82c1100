// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/Messages.h"

#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/Support/Wire.h"
#include "Samples/Samples.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace lumaro {
namespace {

using enum DecodeFault;

const std::string location = R"({"id":"00000000-0000-4000-8000-0000000000b0","kind":"location","center":{"x":1,"y":2},)"
                             R"("rotationDegrees":0,"scale":1,"z":1,"author":"a","createdAt":1,"updatedAt":2,)"
                             R"("payload":{"slot":"b"}})";
const std::string id = R"("batchId":"c0ffee00-0000-4000-8000-0000000000aa")";

// The lines that begin with `start`, of a file beside the golden ones.
std::vector<std::string> linesOf(const std::string& name, std::string_view start) {
    std::vector<std::string> lines;
    std::ifstream file{LUMARO_GOLDEN_DIR "/" + name};
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(start)) lines.push_back(line);
    }
    return lines;
}

// What a message says once it is read and written again; the fault otherwise.
template <class Message>
std::string rewritten(const std::string& text) {
    const auto read = Wire::decode<Message>(text);
    return read ? Wire::encode(*read).value_or("no text") : read.error().path + ": " + read.error().message;
}

TEST(Messages, P23_TheGoldenOnesReadAndWriteByteForByte) {
    const auto fromDevice = linesOf("messages-from-device.jsonl", "{");
    const auto fromRoom = linesOf("messages-from-room.jsonl", "{");
    ASSERT_EQ(fromDevice.size() + fromRoom.size(), 18U);
    for (const auto& line : fromDevice) EXPECT_EQ(rewritten<ClientMessage>(line), line);
    std::set<std::string> types;
    for (const auto& line : fromRoom) {
        EXPECT_EQ(rewritten<ServerMessage>(line), line);
        const std::string type{Wire::decode<ServerMessage>(line).value_or(ServerMessage{}).caseName()};
        EXPECT_TRUE(line.starts_with(R"({"v":1,"type":")" + type + '"')) << type;
        types.insert(type);
    }
    EXPECT_EQ(types.size(), std::variant_size_v<ServerMessage::Value>);
}

TEST(Messages, P24_P25_EveryExampleOfTheProtocolPageIsOne) {
    const auto examples = linesOf("../../docs/protocol.md", R"({"v":1,"type":)");
    EXPECT_EQ(examples.size(), 10U);
    for (const auto& example : examples) {
        const bool isOne = rewritten<ServerMessage>(example) == example || rewritten<ClientMessage>(example) == example;
        EXPECT_TRUE(isOne) << example << '\n' << rewritten<ServerMessage>(example) << rewritten<ClientMessage>(example);
    }
}

TEST(ServerMessage, P4_P25_P26_ReadsWhatAnotherRoomMayWrite) {
    const std::string board = R"({"background":"sky","updatedAt":1,"items":[]})";
    const std::string welcomed = R"({"v":1,"type":"welcome","partner":"b","board":{"v":1,)" + board.substr(1);
    const std::string unknownItem = R"({"op":"upsert","item":{"id":7,"kind":"hologram","payload":[1]}})";
    const std::string unknownOp = R"({"item":[{"kind":7}],"op":"tie","item":null})";
    const std::string known = R"({"op":"setBackground","background":"oat"})";
    const auto opsOf = [](const std::string& ops) { return R"(,"author":"a","ops":[)" + ops + "]}"; };
    const std::vector<std::pair<std::string, std::string>> cases = {
        {R"({"roster":["b","a","b"],"board":)" + board + R"(,"partner":"b","later":[{"x":1}],"type":"welcome"})",
         welcomed + R"(,"roster":["a","b"],"paired":["a","b"]})"},
        {R"({"type":"welcome","partner":"b","board":)" + board + R"(,"roster":[],"names":null,"paired":null})",
         welcomed + R"(,"roster":[],"paired":["a","b"]})"},
        {R"({"v":"later","type":"roster","online":["a"],"names":{"b":null,"c":"x"},"paired":[]})",
         R"({"v":1,"type":"roster","online":["a"],"names":{},"paired":[]})"},
        {R"({"type":"roster","online":[],"online2":1})", R"({"v":1,"type":"roster","online":[],"paired":["a","b"]})"},
        {R"({"type":"ops",)" + id + opsOf(unknownItem + "," + known), R"({"v":1,"type":"ops",)" + id + opsOf(known)},
        {R"({"type":"ops",)" + id + opsOf(unknownOp + "," + known + "," + unknownOp),
         R"({"v":1,"type":"ops",)" + id + opsOf(known)},
        {R"({"type":"ops",)" + id + opsOf(unknownItem), R"({"v":1,"type":"ops",)" + id + opsOf("")},
        {R"({"type":"ack","batchId":"C0FFEE00-0000-4000-8000-0000000000AA"})", R"({"v":1,"type":"ack",)" + id + "}"},
        {R"({"type":"presence","from":"a","nowPlaying":null,"here":null,"activity":"idle"})",
         R"({"v":1,"type":"presence","from":"a","activity":"idle"})"},
        {R"({"type":"error","code":"rate_limited","message":"m"})",
         R"({"v":1,"type":"error","code":"rate_limited","message":"m"})"}};
    for (const auto& [text, same] : cases) EXPECT_EQ(rewritten<ServerMessage>(text), same) << text;
}

TEST(ServerMessage, P25_P26_NamesTheFaultAndPlaceOfWhatItCannotRead) {
    const std::string deep = std::string(1000, '[') + std::string(1000, ']');
    std::string nested;
    for (int depth = 1; depth < maxJsonDepth; ++depth) nested += "[0]";
    const std::vector<std::tuple<DecodeFault, std::string, std::string>> cases = {
        {wrongType, "$", "hb "},
        {missingKey, "$.type", R"({"v":1})"},
        {invalidValue, "$.type", R"({"type":"dance"})"},
        {invalidValue, "$.batchId", R"({"type":"ack","batchId":"c0ffee"})"},
        {missingKey, "$.author", R"({"type":"ops",)" + id + R"(,"ops":[]})"},
        {invalidValue, "$.ops[1].background",
         R"({"type":"ops",)" + id + R"(,"author":"a","ops":[{"op":"x"},{"op":"setBackground","background":"x"}]})"},
        {wrongType, "$.ops[0].op", R"({"type":"ops",)" + id + R"(,"author":"a","ops":[{"op":7}]})"},
        {malformed, "$.ops[0].x", R"({"type":"ops",)" + id + R"(,"author":"a","ops":[{"op":"new","x":tru}]})"},
        {invalidValue, "$.online[1]", R"({"type":"roster","online":["a","c"]})"},
        {wrongType, "$.names.b", R"({"type":"roster","online":[],"names":{"b":7}})"},
        {invalidValue, "$.activity", R"({"type":"presence","from":"a","activity":"typing"})"},
        {missingKey, "$.activity", R"({"type":"presence","from":"a","nowPlaying":{"source":"radio"}})"},
        {duplicateKey, "$.here", R"({"type":"presence","from":"a","here":{"lat":"x"},"here":null,"activity":"idle"})"},
        {malformed, "$.nowPlaying.later", R"({"type":"presence","nowPlaying":{"isPlaying":1,"later":tru}})"},
        {malformed, "$.here", R"({"type":"presence","here":nul,"from":"a"})"},
        {tooDeep, "$.here" + nested, R"({"type":"presence","here":)" + deep + "}"},
        {outOfRange, "$.threadTiedAt", R"({"type":"thread","threadTiedAt":9223372036854776})"},
        {wrongType, "$.code", R"({"type":"error","code":7,"message":""})"}};
    for (const auto& [fault, path, text] : cases) {
        const auto read = Wire::decode<ServerMessage>(text);
        const auto error = read ? DecodeError{} : read.error();
        EXPECT_EQ(error.fault, fault) << text;
        EXPECT_EQ(error.path, path) << text << '\n' << error.message;
    }
}

// Each in a presence of a device and of a room, as it stands there and as it reads.
TEST(Messages, P43_AValueOfTomorrowCostsItsFieldNeverTheMessage) {
    const std::string track =
        R"({"isPlaying":true,"progressMs":1,"sampledAt":2,"durationMs":3,"title":"t","artist":"a",)";
    const std::string playing = track + R"("source":"spotify"})";
    const std::string spot = R"({"lat":1,"lon":2,"label":"x","tz":"UTC","precision":"block","since":1,"sampledAt":2)";
    const std::string placed = spot + "}";
    const std::string fair = R"({"tempC":1,"code":2,"isDay":true,"sampledAt":3)";
    struct Case {
        std::string nowPlaying, here, readNowPlaying, readHere;
    };
    const std::vector<Case> cases = {
        {playing, placed, playing, placed},
        {track + R"("source":"radio"})", placed, "null", placed},
        {track + R"("artworkURL":[1,{"a":"}"}],"source":"spotify"})", placed, "null", placed},
        {R"({"source":"spotify"})", placed, "null", placed},
        {R"({"progressMs":0.5,"deep":{"source":[{}]}})", placed, "null", placed},
        {R"({"title":"a","title":"b"})", placed, "null", placed},
        {"[1,2]", "7", "null", "null"},
        {R"("a tune")", "false", "null", "null"},
        {playing, R"({"precision":"street","lat":1e999})", playing, "null"},
        {playing, spot + R"(,"tz":"UTC"})", playing, "null"},
        {playing, spot + R"(,"weather":)" + fair + "}}", playing, spot + R"(,"weather":)" + fair + "}}"},
        {playing, spot + R"(,"weather":)" + fair + R"(,"feelsC":"mild"}})", playing, placed},
        {playing, R"({"weather":"fair",)" + placed.substr(1), playing, placed}};
    for (const auto& [nowPlaying, here, readNowPlaying, readHere] : cases) {
        const auto fields = [](const std::string& music, const std::string& place) {
            return R"("nowPlaying":)" + music + R"(,"here":)" + place + R"(,"activity":"editing"})";
        };
        const auto given = R"({"v":1,"type":"presence",)" + fields(nowPlaying, here);
        EXPECT_EQ(rewritten<ClientMessage>(given), R"({"v":1,"type":"presence",)" + fields(readNowPlaying, readHere));
        const std::string fromRoom = R"({"v":1,"type":"presence","from":"b",)";
        auto same = fromRoom + fields(readNowPlaying, readHere);
        for (const char* none : {R"("nowPlaying":null,)", R"("here":null,)"}) {
            if (const auto at = same.find(none); at != std::string::npos) same.erase(at, std::string{none}.size());
        }
        EXPECT_EQ(rewritten<ServerMessage>(fromRoom + fields(nowPlaying, here)), same) << given;
    }
}

TEST(Messages, P24_P25_P43_ZoneAndWhatWasSeenTravelWhereTheyCanBeRead) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {R"(,"zone":"Asia/Tokyo","seen":1700000000123)", R"(,"zone":"Asia/Tokyo","seen":1700000000123)"},
        {R"(,"zone":null,"seen":null)", ""},
        {R"(,"zone":{"name":["x"]},"seen":"today")", ""},
        {R"(,"zone":7,"seen":0.5)", ""},
        {R"(,"zone":"UTC","seen":9223372036854776)", R"(,"zone":"UTC")"}};
    for (const auto& [given, same] : cases) {
        const std::string ofDevice = R"({"v":1,"type":"presence","nowPlaying":null,"here":null,"activity":"idle")";
        EXPECT_EQ(rewritten<ClientMessage>(ofDevice + given + "}"), ofDevice + same + "}");
        const std::string ofRoom = R"({"v":1,"type":"presence","from":"b","activity":"idle")";
        EXPECT_EQ(rewritten<ServerMessage>(ofRoom + given + "}"), ofRoom + same + "}");
    }
    for (const char* broken : {R"("zone":tru)", R"("seen":1-)", R"("seen":nul)"}) {
        const auto read =
            Wire::decode<ClientMessage>(std::string{R"({"type":"presence","activity":"idle",)"} + broken + "}");
        EXPECT_EQ(read ? DecodeFault{} : read.error().fault, malformed) << broken;
    }
}

TEST(ClientMessage, P24_P27_IsReadStrictlySoThatNoOpIsLostOnTheWay) {
    const auto batch = [](const std::string& op) { return R"({"type":"ops",)" + id + R"(,"ops":[)" + op + "]}"; };
    EXPECT_EQ(rewritten<ClientMessage>(batch(R"({"op":"upsert","item":)" + location + "}")),
              R"({"v":1,)" + batch(R"({"op":"upsert","item":)" + location + "}").substr(1));
    EXPECT_EQ(rewritten<ClientMessage>(batch(R"({"op":"upsert","item":{"kind":"hologram"}})")),
              "$.ops[0].item.kind: unknown value \"hologram\"");
    EXPECT_EQ(rewritten<ClientMessage>(R"({"type":"presence","activity":"editing","from":"b"})"),
              R"({"v":1,"type":"presence","nowPlaying":null,"here":null,"activity":"editing"})");
    EXPECT_EQ(rewritten<ClientMessage>(R"({"type":"ack",)" + id + "}"), "$.type: unknown value \"ack\"");
}

// A note whose JSON has so many arrays and objects within one another.
BoardItem nested(std::size_t depth) {
    const std::size_t arrays = depth - 5; // item, payload, document, attributes, and the one around the arrays
    auto text = location;
    text.replace(text.find("location"), 8, "note");
    const auto pm = R"({"paper":"oat","pin":"brass","pm":{"type":"doc","attrs":{"x":)" + std::string(arrays + 1, '[') +
                    std::string(arrays + 1, ']') + "}}}";
    text.replace(text.find(R"({"slot":"b"})"), 12, pm);
    return Wire::decode<BoardItem>(text).value_or(BoardItem{});
}

TEST(Messages, P28_HoldWhateverABoardTakes) {
    const Op deepest{Upsert{nested(997)}};
    const auto taken = BoardLogic::apply(std::vector{deepest}, Board{}, samples::noon);
    ASSERT_EQ(taken.applied.size(), 1U);
    const ServerMessage welcome{ServerMessage::Welcome{.board = taken.board, .roster = {}, .names = {}}};
    const ServerMessage relayed{ServerMessage::Ops{.batchId = {}, .ops = taken.applied}};
    const ClientMessage sent{ClientMessage::Ops{.batchId = {}, .ops = taken.applied}};
    EXPECT_EQ(Wire::decode<ServerMessage>(Wire::encode(welcome).value_or("")), welcome);
    EXPECT_EQ(Wire::decode<ServerMessage>(Wire::encode(relayed).value_or("")), relayed);
    EXPECT_EQ(Wire::decode<ClientMessage>(Wire::encode(sent).value_or("")), sent);
    const auto refused = BoardLogic::apply(std::vector{Op{Upsert{nested(998)}}}, Board{}, samples::noon);
    EXPECT_EQ(refused.rejected.size(), 1U);
}

} // namespace
} // namespace lumaro
