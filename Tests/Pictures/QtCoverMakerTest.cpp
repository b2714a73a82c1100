// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/QtCoverMaker.h"

#include "LumaroCore/Protocol/ImageType.h"
#include "Tests/Pictures/PictureFile.h"
#include "Tests/Support/ScratchFolder.h"

#include <QColorSpace>
#include <QImage>

#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include <sys/stat.h>

namespace lumaro {
namespace {

using namespace std::string_literals;

QImage picture(int width, int height) {
    QImage filled{width, height, QImage::Format_ARGB32};
    filled.fill(QColor{30, 90, 160});
    filled.setText(QStringLiteral("Comment"), QStringLiteral("where it plays"));
    filled.setColorSpace(QColorSpace::DisplayP3);
    return filled;
}

QImage noise(int side) {
    std::mt19937 random{7};
    QImage filled{side, side, QImage::Format_RGB32};
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) filled.setPixel(x, y, static_cast<QRgb>(random()));
    }
    return filled;
}

TEST(QtCoverMakerTest, MakesASmallNamelessJpegWhoseIdIsThatOfItsBytes) {
    QtCoverMaker maker;
    for (const char* format : {"JPEG", "PNG", "WEBP", "BMP"}) {
        const auto cover = maker.ofPicture(fileOf(picture(1600, 800), format));
        ASSERT_TRUE(cover) << format;
        EXPECT_EQ(imageTypeOf(cover->jpeg), "image/jpeg");
        EXPECT_LE(cover->jpeg.size(), Cover::maxBytes);
        EXPECT_FALSE(cover->jpeg.contains("where it plays")) << format;
        EXPECT_FALSE(cover->jpeg.contains("ICC_PROFILE")) << format;
        const auto seen = QImage::fromData(QByteArray::fromStdString(cover->jpeg));
        EXPECT_EQ(seen.size(), (QSize{512, 256})) << format;
        EXPECT_EQ(maker.ofPicture(fileOf(picture(1600, 800), format))->id, cover->id);
        EXPECT_NE(maker.ofPicture(fileOf(picture(1600, 900), format))->id, cover->id);
    }
    const auto heaviest = maker.ofPicture(fileOf(noise(512), "PNG"));
    ASSERT_TRUE(heaviest);
    EXPECT_LE(heaviest->jpeg.size(), Cover::maxBytes);
    EXPECT_EQ(maker.idOf("a name").lowerString().at(14), '5');
    EXPECT_EQ(maker.idOf("a name"), maker.idOf("a name"));
}

TEST(QtCoverMakerTest, MakesNothingOfWhatIsNoPictureOrADangerousOne) {
    QtCoverMaker maker;
    QImage bomb{20'000, 20'000, QImage::Format_Mono};
    bomb.fill(0);
    const auto bombFile = fileOf(bomb, "PNG", 0);
    ASSERT_LT(bombFile.size(), 2'097'152U);
    const auto whole = fileOf(picture(600, 600), "PNG");
    for (
        const auto& bytes :
        {bombFile, whole.substr(0, whole.size() / 2), std::string{}, std::string{"<html><body>no</body></html>"},
         std::string{
             R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><image href="file:///etc/passwd"/></svg>)"},
         std::string("\xFF\xD8\xFF\xE0 half a JPEG"), std::string{"GIF89a"}}) {
        EXPECT_FALSE(maker.ofPicture(bytes)) << bytes.substr(0, 40);
    }
}

TEST(QtCoverMakerTest, ReadsPlainFilesOfThisComputerAndDataAlone) {
    QtCoverMaker maker;
    const ScratchFolder folder;
    const auto path = folder.file("über cover.png");
    const auto bytes = fileOf(picture(64, 64), "PNG");
    std::ofstream{path, std::ios::binary} << bytes;
    const auto cover = maker.ofPicture(bytes);
    const std::string folderPath = path.substr(0, path.rfind('/'));
    EXPECT_EQ(maker.ofLocalUrl("file://" + folderPath + "/%C3%BCber%20cover.png")->id, cover->id);
    const auto encoded = QByteArray::fromStdString(bytes).toBase64().toStdString();
    EXPECT_EQ(maker.ofLocalUrl("data:image/png;base64," + encoded)->id, cover->id);

    const auto pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    const auto large = folder.file("large");
    std::ofstream{large, std::ios::binary} << bytes << std::string(CoverMaker::maxPictureBytes, '\0');
    for (const auto& url : {"file://" + pipe, "file://" + large, "file://" + folderPath, "file:///dev/zero"s,
                            "file://elsewhere" + folderPath + "/%C3%BCber%20cover.png", "file:///nothing/there"s,
                            "data:image/png,plain"s, "data:image/png;base64,!!!!"s, "data:"s, "http://127.0.0.1/x"s}) {
        EXPECT_FALSE(maker.ofLocalUrl(url)) << url;
    }
}

} // namespace
} // namespace lumaro
