// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/UUID.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

const std::string lower = "01234567-89ab-cdef-0a9f-fedcba987654";

TEST(UUID, W3_ReadsEitherCaseAndWritesBoth) {
    const std::string upper = "01234567-89AB-CDEF-0A9F-FEDCBA987654";
    for (const auto& text : {lower, upper}) {
        EXPECT_EQ(UUID::parse(text).value_or(UUID{}).lowerString(), lower);
        EXPECT_EQ(UUID::parse(text).value_or(UUID{}).upperString(), upper);
    }
    EXPECT_EQ(UUID::parse(lower).value_or(UUID{}).bytes[9], 0x9f);
}

TEST(UUID, W3_RefusesEverythingElse) {
    for (const auto& text :
         {lower.substr(1), lower + "0", "{" + lower + "}", "{" + lower.substr(2) + "}", std::string{},
          std::string(36, '0'), "0123456-7" + lower.substr(9), "01234567-89abcdef--" + lower.substr(19)})
        EXPECT_FALSE(UUID::parse(text)) << text;
    for (const char other : {'/', ':', '@', 'G', '`', 'g', '\0', '\xb0', '\xff'}) {
        for (std::size_t place = 0; place < lower.size(); ++place) {
            auto text = lower;
            text[place] = other;
            EXPECT_FALSE(UUID::parse(text)) << text;
        }
    }
}

} // namespace
} // namespace lumaro
