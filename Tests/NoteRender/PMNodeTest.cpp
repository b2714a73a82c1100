// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/NoteRender/PMNode.h"

#include "LumaroCore/Support/Wire.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

PMNode nodeOf(const std::string& json) {
    const auto read = Wire::decode<PMNode>(json);
    EXPECT_TRUE(read) << json << ' ' << read.error().path << ' ' << read.error().message;
    return read.value_or(PMNode{});
}

std::string withAttribute(const std::string& json) {
    return R"({"type":"x","attrs":{"v":)" + json + "}}";
}

TEST(PMNode, GivesItsPlainText) {
    const auto a = pm::text("a");
    const std::vector<std::pair<PMNode, const char*>> cases = {
        {pm::emptyDoc(), ""},
        {nodeOf(R"({"type":"text"})"), ""},
        {nodeOf(R"({"type":"text","text":"x","content":[{"type":"text","text":"y"}]})"), "x"},
        {nodeOf(R"({"type":"new","content":[{"type":"text","text":"x"},{"type":"text","text":"y"}]})"), "xy"},
        {pm::doc({pm::paragraph({a}), pm::paragraph({}), pm::paragraph({a})}), "a\n\na"},
        {pm::paragraph({a, pm::doc({a, a}), a}), "aa\naa"}};
    for (const auto& [node, text] : cases) EXPECT_EQ(node.plainText(), text);
    for (const char* text : {"", "\n", "a", "a\n", "\na", "a\n\nb"}) EXPECT_EQ(pm::docOfLines(text).plainText(), text);
}

TEST(PMNode, W19_KeepsWhatItDoesNotKnowAndTellsAbsentFromEmpty) {
    EXPECT_EQ(*Wire::encode(pm::emptyDoc()), R"({"type":"doc","content":[{"type":"paragraph","content":[]}]})");
    for (const char* json :
         {R"({"type":"callout","text":"","attrs":{},"marks":[],"content":[]})", R"({"type":""})",
          R"({"type":"text","marks":[{"type":"highlight","attrs":{"tone":[{}]}},{"type":"textColor"}]})"})
        EXPECT_EQ(*Wire::encode(nodeOf(json)), json);
    EXPECT_EQ(*Wire::encode(nodeOf(R"({"text":null,"marks":null,"zz":1,"type":"doc"})")), R"({"type":"doc"})");
    for (const char* empty : {R"("content":[])", R"("marks":[])", R"("attrs":{})", R"("text":"")"})
        EXPECT_NE(nodeOf(std::string{R"({"type":"doc",)"} + empty + "}"), nodeOf(R"({"type":"doc"})"));
}

TEST(PMMark, GivesTheColourItStores) {
    const auto colour = [](const std::string& mark) {
        const auto node = nodeOf(R"({"type":"text","marks":[{"type":)" + mark + "}]}");
        const auto* hex = node.marks->front().colorHex();
        return hex == nullptr ? "(none)" : *hex;
    };
    EXPECT_EQ(colour(R"("textColor","attrs":{"color":"#AbC","x":1})"), "#AbC");
    for (const char* mark : {R"("textColor","attrs":{"color":12})", R"("textColor","attrs":{"color":null})",
                             R"("textColor","attrs":{})", R"("textColor")", R"("highlight","attrs":{"color":"#abc"})"})
        EXPECT_EQ(colour(mark), "(none)") << mark;
}

TEST(PMValue, W9_W20_ReadsAndWritesEveryKindAndRefusesTheRest) {
    const PMValue one{std::int64_t{1}};
    const std::vector<std::tuple<const char*, PMValue, const char*>> cases = {
        {"true", {true}, "true"},
        {"1.0", one, "1"},
        {"9223372036854775808", {0x1p63}, "9223372036854775808"},
        {"7.25", {7.25}, "7.25"},
        {R"([1,"x"])", {PMValue::Array{one, {std::string{"x"}}}}, R"([1,"x"])"},
        {R"({"k":null,"a":1e0})", {PMValue::Object{{"a", one}, {"k", {}}}}, R"({"a":1,"k":null})"}};
    for (const auto& [json, value, written] : cases) {
        EXPECT_EQ(nodeOf(withAttribute(json)).attrs, (PMAttributes{{"v", value}})) << json;
        EXPECT_EQ(*Wire::encode(nodeOf(withAttribute(json))), withAttribute(written));
    }
    for (const char* json : {"1e400", "-1e400", "[1,[1e999]]", R"({"k":1e400})", "tru"}) {
        EXPECT_EQ(Wire::decode<PMNode>(withAttribute(json)).error().message,
                  "Unsupported JSON value in ProseMirror attrs");
    }
    EXPECT_EQ(Wire::decode<PMNode>(withAttribute(R"(1,"\u0076":1)")).error().fault, DecodeFault::duplicateKey);
}

} // namespace
} // namespace lumaro
