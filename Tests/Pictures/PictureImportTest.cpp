// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/PictureImport.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Protocol/ImageType.h"
#include "Tests/Pictures/PictureFile.h"

#include <QColorSpace>

#include <gtest/gtest.h>

#include <random>

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
        {"", ImportFault::notAPicture},
        {"buy oranges", ImportFault::notAPicture},
        {R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>)", ImportFault::notAPicture},
        {vast, ImportFault::tooManyPixels},
        {png.substr(0, png.size() / 2), ImportFault::damaged}};
    for (const auto& [file, fault] : files) {
        const auto taken = importPicture(file);
        ASSERT_FALSE(taken) << file.substr(0, 20);
        EXPECT_EQ(taken.error(), fault) << file.substr(0, 20);
    }
    EXPECT_FALSE(importPicture(QImage{}));
}

} // namespace
} // namespace lumaro
