// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/QtCityPictureMaker.h"

#include "LumaroCore/Protocol/ImageType.h"
#include "Tests/Pictures/PictureFile.h"

#include <QColor>
#include <QImage>

#include <random>

namespace lumaro {
namespace {

QImage town(int width, int height) {
    std::mt19937 random{7};
    QImage drawn{width, height, QImage::Format_ARGB32};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) drawn.setPixel(x, y, static_cast<QRgb>(random()));
    }
    drawn.setText(QStringLiteral("Comment"), QStringLiteral("the page's words"));
    return drawn;
}

TEST(QtCityPictureMakerTest, MakesAPictureOfTheSizeAskedForAnew) {
    QtCityPictureMaker maker;
    const auto picture = maker.ofPicture(fileOf(town(2048, 1024), "PNG"), 2048, 1024);
    ASSERT_TRUE(picture);
    EXPECT_EQ(imageTypeOf(picture->jpeg), "image/jpeg");
    EXPECT_LE(picture->jpeg.size(), CityPicture::maxBytes);
    EXPECT_FALSE(picture->jpeg.contains("the page's words"));
    EXPECT_EQ(QImage::fromData(QByteArray::fromStdString(picture->jpeg)).size(), (QSize{2048, 1024}));
    EXPECT_EQ(maker.ofPicture(fileOf(town(2048, 1024), "PNG"), 2048, 1024)->id, picture->id);
    EXPECT_NE(maker.ofPicture(fileOf(town(64, 32), "PNG"), 64, 32)->id, picture->id);
}

TEST(QtCityPictureMakerTest, WhatIsNoPictureOfACityGivesNone) {
    QtCityPictureMaker maker;
    const auto png = fileOf(town(64, 32), "PNG");
    QImage blank{64, 32, QImage::Format_RGB32};
    blank.fill(QColor{30, 90, 160});
    for (const auto& bytes : {std::string{}, std::string{"<html>"}, png.substr(0, png.size() / 2), png.substr(0, 20),
                              fileOf(town(64, 32), "JPEG"), fileOf(town(65, 32), "PNG"), fileOf(blank, "PNG")}) {
        EXPECT_FALSE(maker.ofPicture(bytes, 64, 32)) << bytes.size();
    }
}

} // namespace
} // namespace lumaro
