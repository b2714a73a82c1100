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

TEST(BoardNews, TellsANoteByWhatCanBeReadOfIt) {
    const std::string family = "\U0001F469\u200D\U0001F469\u200D\U0001F467";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"\nbuy oranges", "buy oranges"},
        {" \u00A0\n\u200B\n\n  one\n\ntwo \n\t\n\uFEFF", "one\n\ntwo"},
        {"\u202Bשלום", "\u202Bשלום"},
        {"\u00A0", "a note"},
        {"\u200B\u2060\uFEFF\u00AD", "a note"},
        {"\u3000\n\u2028\u0085\n\u2800\u3164", "a note"},
        {"", "a note"},
        {repeated("é", 200), repeated("é", 200)},
        {repeated("x", 201), repeated("x", 200) + "…"},
        {repeated("x", 199) + " y", repeated("x", 199) + "…"},
        {repeated("e\u0301", 300), repeated("e\u0301", 200) + "…"},
        {repeated(family, 201), repeated(family, 200) + "…"},
        {repeated("\U0001F1E9\U0001F1EA", 201), repeated("\U0001F1E9\U0001F1EA", 200) + "…"}};
    for (const auto& [text, told] : cases) {
        EXPECT_EQ(summaryOf(withPayload(NotePayload{pm::docOfLines(text), "butter", "brass", {}}), {}), told);
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
}

} // namespace
} // namespace lumaro
