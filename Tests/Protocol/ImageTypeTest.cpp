// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/ImageType.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

TEST(ImageTypeTest, TheBytesTellNotTheName) {
    using namespace std::string_view_literals;
    EXPECT_EQ(imageTypeOf("\xff\xd8\xff\xe0JFIF"sv), "image/jpeg");
    EXPECT_EQ(imageTypeOf("\x89PNG\r\n\x1a\n\0\0\0\rIHDR"sv), "image/png");
    EXPECT_EQ(imageTypeOf("RIFF\x10\0\0\0WEBPVP8 "sv), "image/webp");
    for (const auto bytes : {""sv, "RIFF"sv, "RIFF\x10\0\0\0WAVE"sv, "\x89PNG\n"sv, "GIF89a"sv, "<svg>"sv}) {
        EXPECT_FALSE(imageTypeOf(bytes)) << bytes;
    }
}

} // namespace
} // namespace lumaro
