// SPDX-License-Identifier: Apache-2.0
#include "Tests/Fakes/KeptPicture.h"
#include "Tests/Widgets/ItemSamples.h"
#include "Widgets/Background/BackgroundPainting.h"
#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Thread/ThreadPainting.h"

#include <QtGui/QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <utility>

namespace lumaro {
namespace {

using samples::Sheet;

QImage blank(QSizeF size, double scale) {
    return {(size * scale).toSize(), QImage::Format_RGB32};
}

QImage painted(const Sheet& sheet, double scale, Appearance light = Appearance::light) {
    constexpr double gap = 52;
    std::vector<QPointF> places;
    QPointF place{gap, gap};
    double width = 0;
    double row = 0;
    for (std::size_t i = 0; i < sheet.items.size(); ++i) {
        if (i > 0 && i % static_cast<std::size_t>(sheet.columns) == 0)
            place = {gap, place.y() + std::exchange(row, 0) + gap};
        places.push_back(place);
        place.rx() += sheet.items[i].size.width() + gap;
        row = std::max(row, sheet.items[i].size.height());
        width = std::max(width, place.x());
    }
    const QSizeF size{width, place.y() + row + gap};
    QImage picture = blank(size, scale);
    QPainter painter{&picture};
    painter.scale(scale, scale);
    paintBackground(painter, size, QStringLiteral("oat"), light);
    const InLight shown{light};
    for (std::size_t i = 0; i < places.size(); ++i) {
        painter.save();
        painter.translate(places[i]);
        paintItem(painter, sheet.items[i].face, sheet.items[i].size);
        painter.restore();
    }
    return picture;
}

QImage paintedBoards(double scale) {
    constexpr QSizeF pane{400, 240};
    constexpr std::array backgrounds{"butter", "blush", "sage", "sky", "lilac", "oat"};
    QImage picture = blank({3 * pane.width(), 3 * pane.height()}, scale);
    QPainter painter{&picture};
    for (std::size_t i = 0; i < 9; ++i) {
        painter.resetTransform();
        painter.scale(scale, scale);
        painter.translate(static_cast<double>(i % 3) * pane.width(), static_cast<double>(i / 3) * pane.height());
        painter.setClipRect(QRectF{{0, 0}, pane});
        paintBackground(painter, pane, QString::fromUtf8(backgrounds[i % 6]),
                        i < 6 ? Appearance::light : Appearance::dark);
        paintThread(painter, {pane.width(), 100}, 0.7, 0.2 + 0.1 * static_cast<double>(i));
    }
    return picture;
}

void expectAsKept(const QImage& picture, double scale, const char* name) {
    EXPECT_EQ(differenceFromKept(picture, scale, QStringLiteral("widgets/") + QString::fromUtf8(name)), "");
}

class ItemPictures : public testing::TestWithParam<double> {};

TEST_P(ItemPictures, LookAsTheyWereKept) {
    for (const auto& sheet : samples::itemSheets()) {
        SCOPED_TRACE(sheet.name);
        expectAsKept(painted(sheet, GetParam()), GetParam(), sheet.name);
    }
}

TEST(ItemPicturesByLamp, LookAsTheyWereKept) {
    for (const auto& sheet : samples::itemSheets()) {
        SCOPED_TRACE(sheet.name);
        const auto name = std::string{sheet.name} + "-lamp";
        expectAsKept(painted(sheet, 1, Appearance::dark), 1, name.c_str());
    }
}

TEST_P(ItemPictures, BoardsAndTheThreadLookAsTheyWereKept) {
    expectAsKept(paintedBoards(GetParam()), GetParam(), "boards");
}

INSTANTIATE_TEST_SUITE_P(AtOneAndTwoPixelsAPoint, ItemPictures, testing::Values(1.0, 2.0));

TEST(ItemBleed, HoldsEverythingThatIsPainted) {
    for (const auto& sheet : samples::itemSheets()) {
        for (const auto& item : sheet.items) {
            constexpr int margin = 80;
            QImage around{(item.size + QSizeF{2 * margin, 2 * margin}).toSize(), QImage::Format_ARGB32_Premultiplied};
            around.fill(Qt::transparent);
            QPainter painter{&around};
            painter.translate(margin, margin);
            paintItem(painter, item.face, item.size);
            painter.setCompositionMode(QPainter::CompositionMode_Clear);
            painter.fillRect(QRectF{{0, 0}, item.size}.marginsAdded(bleed(item.face)), Qt::transparent);
            painter.end();
            const auto* pixels = reinterpret_cast<const QRgb*>(around.constBits());
            const auto visible =
                std::count_if(pixels, pixels + around.width() * around.height(), [](QRgb p) { return qAlpha(p) > 4; });
            EXPECT_EQ(visible, 0) << sheet.name << ' ' << item.name.toStdString();
        }
    }
}

} // namespace
} // namespace lumaro
