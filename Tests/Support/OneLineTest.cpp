// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/OneLine.h"

#include <gtest/gtest.h>

#include <utility>

namespace lumaro {
namespace {

TEST(OneLineTest, NoTextEndsTheLineOrGivesATerminalOrders) {
    using namespace std::string_literals;
    for (const auto& [text, line] : {std::pair{"caf\xc3\xa9 \"\\\""s, "caf\xc3\xa9 \"\\\""s},
                                     {"a\r\nb\tc\0d"s, "a??b?c?d"s},
                                     {"\x1b[2J\x7f"s, "?[2J?"s},
                                     {"\xc2\x9b"
                                      "31m \xc2\xa0"s,
                                      "?31m \xc2\xa0"s},
                                     {"cut \xc2"s, "cut \xc2"s},
                                     {"no \xc2 text\xc2\n"s, "no \xc2 text\xc2?"s}}) {
        EXPECT_EQ(onOneLine(text), line);
    }
}

} // namespace
} // namespace lumaro
