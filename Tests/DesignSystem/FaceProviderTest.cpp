// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/FaceProvider.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <gtest/gtest.h>

namespace lumaro {
namespace {

QImage faceIn(const QString& path) {
    const auto id = FaceProvider::urlOf(path).path().mid(1);
    return FaceProvider{}.requestImage(id, nullptr, {44, 44});
}

TEST(FaceProviderTest, AFaceIsTheRoundMiddleOfItsPicture) {
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("ann & ben, 100%?.png"));
    QImage wide{300, 100, QImage::Format_RGB32};
    wide.fill(Qt::blue);
    for (int y = 0; y < 100; ++y) {
        for (int x = 100; x < 200; ++x) wide.setPixelColor(x, y, Qt::red);
    }
    ASSERT_TRUE(wide.save(path));
    const auto face = faceIn(path);
    ASSERT_EQ(face.size(), QSize(44, 44));
    EXPECT_EQ(face.pixelColor(22, 22), QColor{Qt::red});
    EXPECT_EQ(face.pixelColor(2, 22), QColor{Qt::red});
    EXPECT_EQ(face.pixelColor(0, 0).alpha(), 0);
}

TEST(FaceProviderTest, WhatIsNoPictureOrTooMuchOfOneIsEmpty) {
    const QTemporaryDir folder;
    EXPECT_TRUE(faceIn(folder.filePath(QStringLiteral("none.png"))).isNull());
    const auto path = folder.filePath(QStringLiteral("large.png"));
    ASSERT_TRUE(QImage(8, 8, QImage::Format_RGB32).save(path));
    EXPECT_FALSE(faceIn(path).isNull());
    ASSERT_TRUE(QFile::resize(path, FaceProvider::maxBytes + 1));
    EXPECT_TRUE(faceIn(path).isNull());
}

} // namespace
} // namespace lumaro
