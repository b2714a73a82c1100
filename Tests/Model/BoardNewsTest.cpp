// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/BoardNews.h"

#include "LumaroCore/NoteRender/PMNode.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

std::string repeated(std::string_view text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

BoardItem withPayload(Payload payload) {
    BoardItem item;
    item.payload = std::move(payload);
    return item;
}

TEST(BoardNews, TellsANoteOnOneLineThatEndsBehindAWord) {
    const std::string family = "\U0001F469\u200D\U0001F469\u200D\U0001F467";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"\nbuy oranges\nand bread\n", "buy oranges\nand bread"},
        {"1\n2\n3\n4", "1 2 3 4"},
        {" \u00A0\n\u200B\n\n  one\n\ntwo \n\t\n\u2028three\u0085four\x01\x1b[0m", "\u200B one two three four [0m"},
        {"\u202Bשלום", "\u202Bשלום"},
        {"\u200B\u2060\uFEFF\u00AD", "a note"},
        {"\u3000\n\u2028\u0085\n\u2800\u3164", "a note"},
        {"", "a note"},
        {repeated("é", 120), repeated("é", 120)},
        {repeated("x", 121), repeated("x", 120) + "…"},
        {repeated("oranges ", 20), "oranges" + repeated(" oranges", 14) + "…"},
        {repeated("x", 119) + " y z", repeated("x", 119) + "…"},
        {repeated("x", 20) + " " + repeated("y", 200), repeated("x", 20) + " " + repeated("y", 99) + "…"},
        {repeated("e\u0301", 300), repeated("e\u0301", 120) + "…"},
        {repeated(family, 121), repeated(family, 120) + "…"},
        {repeated("\U0001F1E9\U0001F1EA", 121), repeated("\U0001F1E9\U0001F1EA", 120) + "…"}};
    for (const auto& [text, told] : cases) {
        const auto note = withPayload(NotePayload{pm::docOfLines(text), "butter", "brass", {}});
        const BoardItem* const one[] = {&note};
        EXPECT_EQ(newsOf(one, {}, "Ben").body, told);
    }
}

TEST(BoardNews, FallsBackWhereThePartnersNameIsNotKnown) {
    const auto countdown = withPayload(CountdownPayload{});
    const BoardItem* const two[] = {&countdown, &countdown};
    for (const char* const name : {"", " \u00A0"}) {
        EXPECT_EQ(newsOf(two, {}, name), (LocalNotification{"Lumaro", "your person sent 2 things", {}}));
        EXPECT_EQ(newsOf({two, 1}, {}, name), (LocalNotification{"Lumaro", "your person pinned something up", {}}));
    }
    EXPECT_EQ(newsOf(two, {}, "Ben"), (LocalNotification{"Ben", "Ben sent 2 things", {}}));
    EXPECT_EQ(newsOf(two, {}, "Ben\n" + repeated("x", 50)).title, "Ben " + repeated("x", 36) + "…");
}

} // namespace
} // namespace lumaro
