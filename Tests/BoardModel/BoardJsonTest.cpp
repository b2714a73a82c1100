// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/BoardJson.h"

#include "LumaroCore/Support/JsonCodec.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <regex>

namespace lumaro {
namespace {

using enum DecodeFault;
using Ops = std::vector<ForwardCompatibleOp>;
using Matches = std::sregex_iterator;

std::string golden(const std::string& name) {
    std::ifstream file{LUMARO_GOLDEN_DIR "/" + name, std::ios::binary};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    return text.substr(0, text.find_last_not_of('\n') + 1);
}

const std::string goldenBoard = golden("board-every-kind.json");
const std::string location = R"({"id":"00000000-0000-4000-8000-0000000000b0","kind":"location","center":{"x":1,"y":2},)"
                             R"("rotationDegrees":0,"scale":1,"z":1,"author":"a","createdAt":1,"updatedAt":2,)"
                             R"("payload":{"slot":"b"}})";

template <class T>
T valueOf(const std::string& json) {
    const auto read = Wire::decode<T>(json);
    EXPECT_TRUE(read) << json << '\n' << read.error().path << ' ' << read.error().message;
    return read.value_or(T{});
}

template <class T>
DecodeError errorOf(const std::string& json) {
    const auto read = Wire::decode<T>(json);
    return read ? DecodeError{} : read.error();
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

std::string boardOf(const std::string& items) {
    return R"({"background":"sky","updatedAt":1,"items":[)" + items + "]}";
}

// The golden board with something else in place of a part of it.
std::string goldenWith(const std::string& other, const std::ssub_match& part) {
    return std::string{goldenBoard.begin(), part.first} + other + std::string{part.second, goldenBoard.end()};
}

TEST(BoardJson, W12_W13_W16_ReadsTheGoldenBoardInAnyLayoutAndWritesItByteForByte) {
    const auto board = valueOf<Board>(goldenBoard);
    EXPECT_EQ(*Wire::encode(board), goldenBoard);
    for (std::size_t i = 0; i < namesOf(ItemKind{}).size(); ++i)
        EXPECT_EQ(static_cast<std::size_t>(board.items.at(i).kind()), i);
    EXPECT_EQ(
        valueOf<BoardItem>(replaced(replaced(location, R"("kind":"location",)", ""), "}}", R"(},"kind":"location"})")),
        valueOf<BoardItem>(location))
        << "what a payload holds may be told behind it";
    EXPECT_EQ(valueOf<Board>(std::regex_replace(goldenBoard, std::regex{R"([\[\]{},:])"}, " \n$&\t\r")), board);
    const auto slashes = std::regex_replace(goldenBoard, std::regex{"/"}, R"(\/)");
    EXPECT_EQ(valueOf<Board>(replaced(slashes, "background", R"(back\u0067round)")), board);
}

TEST(BoardJson, RefusesEveryTruncation) {
    const auto ops = golden("ops.json");
    for (std::size_t size = 0; size < goldenBoard.size(); ++size)
        ASSERT_FALSE(Wire::decode<Board>(goldenBoard.substr(0, size))) << size;
    for (std::size_t size = 0; size < ops.size(); ++size) ASSERT_FALSE(Wire::decode<Ops>(ops.substr(0, size))) << size;
}

TEST(BoardJson, W5_W6_NamesEachRequiredKeyThatIsMissing) {
    const std::regex optional{"v|threadTiedAt|scale|expiresAt|takenAt|startedAt|startedBy|joinedAt|on|text|attrs|marks|"
                              "content|deep|k|rev|color"};
    const std::regex keys{R"re("(\w+)":.)re"};
    for (Matches match{goldenBoard.begin(), goldenBoard.end(), keys}; match != Matches{}; ++match) {
        const auto error = errorOf<Board>(goldenWith("zz", (*match)[1]));
        const bool isOptional = std::regex_match(match->str(1), optional) || match->str() == R"("aspect":0)";
        EXPECT_EQ(error.fault, isOptional ? DecodeFault{} : missingKey) << match->str() << error.path;
        EXPECT_TRUE(isOptional || error.path.ends_with("." + match->str(1))) << match->str() << error.path;
    }
}

TEST(BoardJson, W14_ALockAndWhoPutItUpStandOnlyWhereTheySayMore) {
    const auto with = [](const std::string& lock) { return replaced(location, R"("payload")", lock + R"("payload")"); };
    EXPECT_EQ(*Wire::encode(valueOf<BoardItem>(with(R"("locked":true,)"))), with(R"("locked":true,)"));
    EXPECT_NE(valueOf<BoardItem>(with(R"("locked":true,)")), valueOf<BoardItem>(location));
    for (const char* open : {R"("locked":false,)", R"("locked":null,)"})
        EXPECT_EQ(*Wire::encode(valueOf<BoardItem>(with(open))), location);
    EXPECT_EQ(errorOf<BoardItem>(with(R"("locked":"yes",)")).fault, wrongType);

    auto item = valueOf<BoardItem>(location);
    item.setAuthor(PartnerID::b);
    EXPECT_EQ(*Wire::encode(item), replaced(with(R"("createdBy":"a",)"), R"("author":"a")", R"("author":"b")"));
    EXPECT_EQ(valueOf<BoardItem>(*Wire::encode(item)).creator(), PartnerID::a);
    item.setAuthor(PartnerID::a);
    EXPECT_EQ(*Wire::encode(item), location);
}

TEST(BoardJson, W10_W14_ReadsAnItemWithoutAScaleAtScaleOne) {
    for (const char* scale : {"", R"("scale":null,)", R"("scale":1.0,)"})
        EXPECT_EQ(*Wire::encode(valueOf<BoardItem>(replaced(location, R"("scale":1,)", scale))), location);
}

TEST(BoardJson, W15_SkipsItemsOfUnknownKindsWhateverTheyHold) {
    for (const char* item : {R"({"kind":"hologram"})", R"({"id":"no id","kind":"hologram","center":7,"payload":null})",
                             R"({"payload":[{"kind":1}],"id":1,"id":2,"k\u0069nd":"Note"})"})
        EXPECT_EQ(valueOf<Board>(boardOf(item + ("," + location))), valueOf<Board>(boardOf(location))) << item;
    EXPECT_EQ(errorOf<BoardItem>(replaced(location, "00000000-0000-4000-8000-0000000000b0", "x")).message,
              "Not a UUID: x");
    EXPECT_EQ(errorOf<BoardItem>(R"({"kind":"new"})").path, "$.kind");
    for (const char* item : {"7", "{}", R"({"kind":7})", R"({"kind":"new","x":tru})", R"({"kind":"new","\x":1})"})
        EXPECT_FALSE(Wire::decode<Board>(boardOf(item))) << item;
    const auto deep = R"({"x":)" + std::string(300000, '[') + std::string(300000, ']') + R"(,"kind":"new"})";
    EXPECT_EQ(errorOf<Board>(boardOf(deep)).fault, tooDeep);
}

TEST(BoardJson, W13_ReadsMoreThanABoardMayHoldAndLeavesTombstonesOut) {
    std::string items = location;
    for (int i = 0; i < 60; ++i) items += "," + location;
    EXPECT_EQ(valueOf<Board>(boardOf(items)).items.size(), 61U);
    auto board = valueOf<Board>(replaced(boardOf(""), "{", R"({"v":2,"tombstones":{"x":1},)"));
    EXPECT_EQ(board, valueOf<Board>(boardOf("")));
    board.tombstones[UUID{}] = Instant{};
    EXPECT_NE(board, valueOf<Board>(boardOf("")));
    EXPECT_EQ(*Wire::encode(board), R"({"v":1,"background":"sky","updatedAt":1,"items":[]})");
}

TEST(BoardJson, LeavesTheTextAloneWhenAnItemHasNone) {
    auto item = valueOf<BoardItem>(location);
    std::string text = "kept";
    EXPECT_EQ(Wire::encodeTo(text, item, 999).error().fault, EncodeFault::tooDeep);
    item.center.y = std::nan("");
    EXPECT_EQ(Wire::encodeTo(text, item).error(), (EncodeError{EncodeFault::notFinite, "y"}));
    EXPECT_EQ(text, "kept");
}

TEST(OpJson, W15_W18_ReadsTheGoldenOpsWithoutTheUnknown) {
    EXPECT_EQ(*Wire::encode(understood(valueOf<Ops>(golden("ops.json")))),
              R"([{"op":"upsert","item":)" + location +
                  R"(},{"op":"delete","itemId":"00000000-0000-4000-8000-0000000000b1","deletedAt":3},)"
                  R"({"op":"setBackground","background":"oat"}])");
}

TEST(OpJson, W6_W9_NamesTheFaultAndPlace) {
    const auto upsert = R"("op":"upsert","item":)" + location;
    const auto with = [&](const char* what, const char* other) { return replaced(upsert, what, other); };
    const std::vector<std::tuple<DecodeFault, const char*, std::string>> cases = {
        {invalidValue, ".op", R"("op":"replace")"},
        {missingKey, ".op", R"("item":{})"},
        {duplicateKey, ".op", R"("op":"setBackground","background":"oat","op":"delete")"},
        {wrongType, ".item", R"("op":"upsert","item":null)"},
        {missingKey, ".item.kind", R"("item":{},"op":"upsert")"},
        {duplicateKey, ".item.z", with(R"("z":1)", R"("z":1,"z":1)")},
        {duplicateKey, ".item.scale", with(R"("scale":1)", R"("scale":null,"scale":2)")},
        {outOfRange, ".item.center.x", with(R"("x":1)", R"("x":1e999)")},
        {invalidValue, ".item.payload.slot", with(R"("slot":"b")", R"("slot":"c")")}};
    for (const auto& [fault, path, fields] : cases) {
        const auto error = errorOf<Ops>("[{" + fields + "}]");
        EXPECT_EQ(error.path, std::string{"$[0]"} + path) << fields;
        EXPECT_EQ(error.fault, fault) << fields << ' ' << error.message;
    }
}

} // namespace
} // namespace lumaro
