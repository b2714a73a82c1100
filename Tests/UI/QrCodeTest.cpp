// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/QrCode.h"

#include "Tests/Support/ScratchFolder.h"

#include <QPainter>
#include <QProcess>

namespace lumaro {
namespace {

// What a camera reads.
QString readBack(const QImage& picture) {
    const ScratchFolder folder;
    const auto file = QString::fromStdString(folder.file("code.png"));
    EXPECT_TRUE(picture.save(file));
    QProcess reader;
    reader.start(QStringLiteral("zbarimg"), {QStringLiteral("--quiet"), QStringLiteral("--raw"), file});
    EXPECT_TRUE(reader.waitForFinished()) << reader.errorString().toStdString();
    return QString::fromUtf8(reader.readAllStandardOutput()).chopped(1);
}

QImage drawn(const QString& text, int width, int height) {
    QrCode code;
    code.setSize(QSizeF(width, height));
    code.setText(text);
    QImage picture{width, height, QImage::Format_RGB32};
    QPainter painter{&picture};
    code.paint(&painter);
    return picture;
}

TEST(QrCodeTest, ACameraReadsTheLinkAtAnySizeInItsColours) {
    for (const auto& text : {QStringLiteral("https://boards.example/join#k=aZ09-_~%20"), QStringLiteral("x"),
                             QStringLiteral("für dich 💌"), QString{600, u'7'}}) {
        for (const int side : {260, 417}) EXPECT_EQ(readBack(drawn(text, side, side + 37)), text) << side;
    }
}

TEST(QrCodeTest, ItLiesInAQuietZone) {
    const QImage modules = qrImage(QStringLiteral("lumaro"));
    for (int i = 0; i < modules.width(); ++i) EXPECT_EQ(modules.pixelIndex(3, i) + modules.pixelIndex(i, 3), 0);
    EXPECT_EQ(modules.pixelIndex(4, 4), 1);
}

TEST(QrCodeTest, WhatNoCodeHoldsIsNoCode) {
    EXPECT_TRUE(qrImage(QString{}).isNull());
    EXPECT_TRUE(qrImage(QString{9000, u'x'}).isNull());
}

} // namespace
} // namespace lumaro
