// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/PictureImport.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Protocol/ImageType.h"
#include "Tests/Pictures/CutOutScenes.h"
#include "Tests/Pictures/PictureFile.h"
#include "Tests/Support/ScratchFolder.h"

#include <QColorSpace>

#include <gtest/gtest.h>
#include <libheif/heif.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <random>

#include <sys/stat.h>

namespace lumaro {
namespace {

using namespace std::string_literals;

QImage noise(int width, int height, QImage::Format format) {
    std::mt19937 random{7};
    QImage picture{width, height, format};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) picture.setPixel(x, y, static_cast<QRgb>(random()));
    }
    return picture;
}

QImage seen(const ImportedPicture& picture) {
    return QImage::fromData(QByteArray::fromStdString(picture.bytes));
}

// A camera's words: "turn me right by a quarter", and who made it.
const std::string cameraWords = "\xff\xe1\x00\x42"s + "Exif\0\0MM\0\x2a\0\0\0\x08\0\x02"s +
                                "\x01\x0f\0\x02\0\0\0\x10\0\0\0\x26"s + "\x01\x12\0\x03\0\0\0\x01\0\x06\0\0"s +
                                "\0\0\0\0"s + "at 50.08N 14.42E"s + "\0\0\0\0"s;

// Two frames of 2 by 1: red, then blue.
const std::string movingGif = "GIF89a\x02\0\x01\0\x80\0\0\xC8\x37\x37\x10\x10\xF0"s +
                              "\x21\xF9\x04\0\x0A\0\0\0\x2C\0\0\0\0\x02\0\x01\0\0\x02\x02\x04\x0A\0"s +
                              "\x21\xF9\x04\0\x0A\0\0\0\x2C\0\0\0\0\x02\0\x01\0\0\x02\x02\x4C\x0A\0\x3B"s;

// 16 by 8 in the four inks of a press, reddish.
const QByteArray cmykJpeg =
    "/9j/7gAOQWRvYmUAZAAAAAAA/9sAQwADAgIDAgIDAwMDBAMDBAUIBQUEBAUKBwcGCAwKDAwLCgsLDQ4SEA0OEQ4LCxAWEBETFBUV"
    "FQwPFxgWFBgSFBUU/8AAFAgACAAQBEMRAE0RAFkRAEsRAP/EABYAAQEBAAAAAAAAAAAAAAAAAAAICf/EABQQAQAAAAAAAAAAAAAA"
    "AAAAAAD/2gAOBEMATQBZAEsAAD8A1TR4jxqmAP/Z";

// As phones write it: lying, 64 by 32, with the container's word to turn it right by a quarter, in Display P3. Red on
// the left, which comes to be above, blue on the right.
std::string heifOf(heif_compression_format compression) {
    heif_context* const context = heif_context_alloc();
    heif_encoder* encoder = nullptr;
    EXPECT_EQ(heif_context_get_encoder_for_format(context, compression, &encoder).code, heif_error_Ok);
    heif_image* image = nullptr;
    heif_image_create(64, 32, heif_colorspace_RGB, heif_chroma_interleaved_RGB, &image);
    heif_image_add_plane(image, heif_channel_interleaved, 64, 32, 8);
    int stride = 0;
    auto* const rows = heif_image_get_plane(image, heif_channel_interleaved, &stride);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 64; ++x) {
            const std::array<std::uint8_t, 3> colour =
                x < 32 ? std::array<std::uint8_t, 3>{180, 40, 40} : std::array<std::uint8_t, 3>{0, 0, 250};
            std::ranges::copy(colour, rows + y * stride + 3 * x);
        }
    }
    const auto profile = QColorSpace{QColorSpace::DisplayP3}.iccProfile();
    heif_image_set_raw_color_profile(image, "prof", profile.constData(), static_cast<std::size_t>(profile.size()));
    auto* const options = heif_encoding_options_alloc();
    options->image_orientation = heif_orientation_rotate_90_cw;
    EXPECT_EQ(heif_context_encode_image(context, image, encoder, options, nullptr).code, heif_error_Ok);
    std::string file;
    heif_writer writer{1, [](heif_context*, const void* data, std::size_t size, void* to) {
                           static_cast<std::string*>(to)->assign(static_cast<const char*>(data), size);
                           return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                       }};
    heif_context_write(context, &writer, &file);
    heif_encoding_options_free(options);
    heif_image_release(image);
    heif_encoder_release(encoder);
    heif_context_free(context);
    return file;
}

TEST(PictureImportTest, APictureStandsUprightAndSaysNothingOfWhereItWasTaken) {
    QImage lying{400, 200, QImage::Format_RGB32};
    lying.fill(Qt::blue);
    for (int y = 0; y < 200; ++y) std::fill_n(reinterpret_cast<QRgb*>(lying.scanLine(y)), 200, qRgb(180, 40, 40));
    lying.setText(QStringLiteral("Comment"), QStringLiteral("at home"));
    lying.setColorSpace(QColorSpace::DisplayP3);
    auto file = fileOf(lying, "JPEG").insert(2, cameraWords);
    const auto taken = importPicture(file);
    ASSERT_TRUE(taken);
    EXPECT_DOUBLE_EQ(taken->aspect, 0.5);
    EXPECT_EQ(imageTypeOf(taken->bytes), "image/jpeg");
    for (const auto* word : {"Exif", "14.42E", "at home", "ICC_PROFILE"}) {
        EXPECT_NE(file.find(word), std::string::npos) << "the test's picture lacks " << word;
        EXPECT_EQ(taken->bytes.find(word), std::string::npos) << word;
    }
    const QColor top = seen(*taken).pixelColor(100, 50);
    EXPECT_NEAR(top.red(), 196, 4) << "the wider red in the numbers of the usual one";
    EXPECT_NEAR(top.green(), 10, 4);
}

TEST(PictureImportTest, AnyPictureEndsUpSmallEnoughForTheRoom) {
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32}) {
        const bool hasTransparency = format == QImage::Format_ARGB32;
        const auto taken = importPicture(noise(2600, 1300, format));
        ASSERT_TRUE(taken);
        EXPECT_LE(taken->bytes.size(), BoardSpec::maxMediaBytes);
        EXPECT_EQ(imageTypeOf(taken->bytes), hasTransparency ? "image/png" : "image/jpeg");
        EXPECT_EQ(taken->hasTransparency, hasTransparency);
        EXPECT_NEAR(taken->aspect, 2, 0.01);
        EXPECT_LE(seen(*taken).width(), 2048);
        EXPECT_GE(seen(*taken).width(), 500);
    }
}

TEST(PictureImportTest, WhatIsNoPictureOrTooMuchOfOneIsRefused) {
    const auto png = fileOf(noise(64, 64, QImage::Format_RGB32), "PNG");
    auto vast = png;
    vast.replace(16, 17, "\0\0\x9c\x40\0\0\x9c\x40\x08\x02\0\0\0\xde\x6e\x99\x52"s);
    const std::vector<std::pair<std::string, ImportFault>> files{
        {"", ImportFault::empty},
        {"buy oranges", ImportFault::notAPicture},
        {R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>)", ImportFault::notAPicture},
        {vast, ImportFault::tooManyPixels},
        {std::string("\0\0\0\x18"
                     "ftypmp42",
                     12),
         ImportFault::notAPicture}};
    for (const auto& [file, fault] : files) {
        const auto taken = importPicture(file);
        ASSERT_FALSE(taken) << file.substr(0, 20);
        EXPECT_EQ(taken.error().fault, fault) << file.substr(0, 20);
    }
    EXPECT_EQ(importPicture(vast).error().detail, "40000 × 40000");
    EXPECT_FALSE(importPicture(QImage{}));
}

TEST(PictureImportTest, FortyMegapixelsAreMadeSmallWhileTheyAreRead) {
    QImage broad{7300, 5480, QImage::Format_RGB888};
    broad.fill(QColor{60, 120, 180});
    for (const auto& file : {fileOf(broad, "JPEG"), fileOf(broad, "PNG", 100),
                             fileOf(broad.convertToFormat(QImage::Format_Grayscale8), "PNG", 100)}) {
        const auto taken = importPicture(file);
        ASSERT_TRUE(taken) << static_cast<int>(taken.error().fault);
        EXPECT_EQ(seen(*taken).size(), (QSize{2048, 1537}));
    }
}

TEST(PictureImportTest, AFileThatWasCutOffIsRefusedAndItsWholeIsNot) {
    const auto picture = noise(96, 64, QImage::Format_RGB32);
    for (const char* format : {"JPEG", "PNG", "WEBP", "BMP"}) {
        const auto whole = fileOf(picture, format);
        EXPECT_TRUE(importPicture(whole)) << format;
        EXPECT_TRUE(importPicture(whole + "and more")) << format;
        for (const auto size : {whole.size() / 2, whole.size() - 9, whole.size() - 1}) {
            const auto taken = importPicture(whole.substr(0, size));
            ASSERT_FALSE(taken) << format << size;
            EXPECT_EQ(taken.error().fault, ImportFault::cutShort) << format << size;
        }
    }
    // What was still being downloaded often has its full length already.
    auto hollow = fileOf(picture, "JPEG");
    hollow.replace(hollow.size() / 2, std::string::npos, std::string(hollow.size() - hollow.size() / 2, '\0'));
    EXPECT_EQ(importPicture(hollow).error().fault, ImportFault::cutShort);
    EXPECT_EQ(importPicture(movingGif.substr(0, movingGif.size() / 2 - 10)).error().fault, ImportFault::cutShort);
}

TEST(PictureImportTest, NoRuinOfAFileIsMoreThanRefused) {
    std::mt19937 random{5};
    for (const auto& whole : {fileOf(noise(24, 24, QImage::Format_RGB32), "JPEG"), movingGif,
                              heifOf(heif_compression_HEVC), fileOf(noise(24, 24, QImage::Format_RGB32), "BMP")}) {
        for (int i = 0; i < 150; ++i) {
            auto ruin = whole.substr(0, 1 + random() % whole.size());
            for (int hits = 0; hits < 4; ++hits) ruin[random() % ruin.size()] = static_cast<char>(random());
            const auto taken = importPicture(ruin);
            EXPECT_TRUE(!taken || !seen(*taken).isNull());
        }
    }
}

TEST(PictureImportTest, PhonesPicturesStandUprightInTheUsualColours) {
    becomeApplication();
    for (const auto compression : {heif_compression_HEVC, heif_compression_AV1}) {
        const auto file = heifOf(compression);
        const auto taken = importPicture(file);
        ASSERT_TRUE(taken) << compression << textOf(taken.error().fault);
        EXPECT_DOUBLE_EQ(taken->aspect, 0.5) << "the container turns it";
        EXPECT_NEAR(seen(*taken).pixelColor(16, 8).red(), 196, 8) << "from the wider red";
        EXPECT_NEAR(seen(*taken).pixelColor(16, 56).blue(), 255, 12);
        EXPECT_EQ(importPicture(file.substr(0, file.size() - 20)).error().fault, ImportFault::cutShort);
    }
}

TEST(PictureImportTest, UnusualPixelsBecomeUsualOnes) {
    QImage deep{64, 32, QImage::Format_RGBX64};
    deep.fill(QColor{200, 55, 55});
    const auto cmyk = QByteArray::fromBase64(cmykJpeg).toStdString();
    for (const auto& file : {fileOf(deep, "PNG"), cmyk, movingGif}) {
        const auto taken = importPicture(file);
        ASSERT_TRUE(taken);
        EXPECT_DOUBLE_EQ(taken->aspect, 2);
        const QColor middle = seen(*taken).pixelColor(1, 0);
        EXPECT_GT(middle.red(), 190);
        EXPECT_LT(middle.blue(), 70) << "of a moving picture, the first";
    }
}

TEST(PictureImportTest, WhatLiesAtAPathIsAFileOrSaysWhatItIs) {
    const ScratchFolder folder;
    const auto put = [&](const char* name, const std::string& bytes) {
        std::ofstream{folder.file(name), std::ios::binary} << bytes;
        return folder.file(name);
    };
    EXPECT_TRUE(importPictureFile(put("jpeg.png", fileOf(noise(8, 8, QImage::Format_RGB32), "JPEG"))));
    const auto pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    const auto large = put("large.bmp", "BM");
    std::filesystem::resize_file(large, largestPictureFile + 1);
    const std::vector<std::pair<std::string, ImportFault>> paths{
        {put("empty.jpg", ""), ImportFault::empty},   {put("text.jpg", "hello"), ImportFault::notAPicture},
        {folder.path(), ImportFault::aFolder},        {pipe, ImportFault::notAFile},
        {"/dev/zero", ImportFault::notAFile},         {large, ImportFault::tooManyBytes},
        {folder.file("gone"), ImportFault::notOpened}};
    for (const auto& [path, fault] : paths) {
        const auto taken = importPictureFile(path);
        ASSERT_FALSE(taken) << path;
        EXPECT_EQ(taken.error().fault, fault) << path;
    }
}

} // namespace
} // namespace lumaro
