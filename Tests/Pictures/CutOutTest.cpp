// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/CutOut.h"

#include "Tests/Pictures/CutOutScenes.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace lumaro {
namespace {

// A red figure in two parts, with a bead of the ground's colour on it, on green and brown weave.
class CutOutTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        becomeApplication();
        std::mt19937 random{3};
        for (int y = 0; y < 600; ++y) {
            for (int x = 0; x < 800; ++x) {
                const int light = static_cast<int>(random() % 40) + ((x / 12 + y / 12) % 2) * 30;
                picture_.setPixel(x, y, qRgb(70 + light, 90 + light, 40 + light / 2));
            }
        }
        figure_.addEllipse(QPointF{400, 150}, 70, 70);
        figure_.addRoundedRect(QRectF{280, 260, 240, 260}, 60, 60);
        QPainter painter{&picture_};
        painter.fillPath(figure_, QColor{200, 50, 60});
        painter.setBrush(QColor{110, 130, 60});
        painter.drawEllipse(QPointF{400, 400}, 4, 4);
    }

    static double alike(const CutOut& cut) {
        QImage wanted{picture_.size(), QImage::Format_Grayscale8};
        wanted.fill(0);
        QPainter{&wanted}.fillPath(figure_, Qt::white);
        return likeness(cut.mask(), wanted);
    }

    static inline QImage picture_{800, 600, QImage::Format_RGB32};
    static inline QPainterPath figure_;
    CutOut cut_{picture_};
};

TEST_F(CutOutTest, AFrameCutsAFigureInAllItsParts) {
    cut_.setFrame({230, 50, 340, 500});
    EXPECT_GT(alike(cut_), 0.95);
    const QPainterPath edge = cut_.outline();
    EXPECT_TRUE(edge.contains(QPointF{400, 150}) && edge.contains(QPointF{400, 400})) << "a bead is no hole";
    EXPECT_FALSE(edge.contains(QPointF{300, 150}));
    const QImage sticker = cut_.sticker();
    EXPECT_NEAR(sticker.width(), 240, 24);
    EXPECT_NEAR(sticker.height(), 440, 24);
    EXPECT_EQ(qAlpha(sticker.pixel(4, 4)), 0);
    EXPECT_NEAR(qRed(sticker.pixel(sticker.width() / 2, 300)), 200, 20);
}

TEST_F(CutOutTest, AScribbleFindsTheFigureAndAnotherOneTakesAPartAway) {
    cut_.scribble(std::array{QPointF{400, 120}, QPointF{400, 480}}, 24, CutOut::Scribble::keep);
    EXPECT_GT(alike(cut_), 0.9);
    const QImage before = cut_.mask();
    cut_.scribble(std::array{QPointF{345, 150}, QPointF{455, 150}}, 130, CutOut::Scribble::drop);
    EXPECT_FALSE(cut_.outline().contains(QPointF{400, 150}));
    EXPECT_TRUE(cut_.outline().contains(QPointF{400, 400}));
    CutOut again{picture_};
    again.scribble(std::array{QPointF{400, 120}, QPointF{400, 480}}, 24, CutOut::Scribble::keep);
    EXPECT_EQ(again.mask(), before) << "the same gestures cut the same edge";
}

TEST_F(CutOutTest, AnyGestureCanBeTakenBackToTheGuess) {
    cut_.guess();
    const QImage guess = cut_.mask();
    cut_.scribble(std::array{QPointF{345, 150}, QPointF{455, 150}}, 130, CutOut::Scribble::drop);
    const QImage one = cut_.mask();
    cut_.setFrame({230, 50, 340, 500});
    for (const auto& before : {one, guess, guess}) {
        cut_.undo();
        EXPECT_EQ(cut_.mask(), before);
    }
    for (int i = 0; i < CutOut::mostUndoable + 3; ++i) {
        cut_.scribble(std::array{QPointF{400, 150}}, 10, CutOut::Scribble::keep);
    }
    EXPECT_EQ(cut_.undoable(), CutOut::mostUndoable);
}

// Nobody points at anything. Seeds that the method was not made with.
TEST(SubjectGuessTest, WhatAPhotoIsOfIsCutOutByItself) {
    constexpr unsigned scenes = 10;
    for (const auto subject : {CutOutScene::Subject::person, CutOutScene::Subject::cat, CutOutScene::Subject::cup}) {
        double sum = 0;
        int wrong = 0;
        for (unsigned seed = 500; seed < 500 + scenes; ++seed) {
            const auto scene = CutOutScene::make(subject, seed, 640);
            CutOut cut{scene.photo};
            cut.guess();
            const double alike = likeness(cut.mask(), scene.truth);
            wrong += alike < 0.9 ? 1 : 0;
            sum += alike;
        }
        EXPECT_GT(sum / scenes, 0.95) << nameOf(subject);
        EXPECT_LE(wrong, 1) << nameOf(subject) << ": a brown cat on a brown table is for strokes";
    }
}

TEST(SubjectGuessTest, NothingStandsOutOfAPlainPicture) {
    becomeApplication();
    for (const QSize size : {QSize{1, 1}, QSize{3, 400}, QSize{640, 480}}) {
        QImage plain{size, QImage::Format_RGB32};
        plain.fill(QColor{120, 130, 140});
        CutOut cut{plain};
        cut.guess();
        EXPECT_TRUE(cut.outline().isEmpty());
        EXPECT_TRUE(cut.sticker().isNull());
    }
}

TEST_F(CutOutTest, ATransparentPictureIsTrimmedAndNothingElse) {
    QImage glass{900, 700, QImage::Format_ARGB32};
    glass.fill(Qt::transparent);
    QPainter{&glass}.fillRect(QRect{300, 200, 180, 90}, QColor{10, 120, 200});
    CutOut cut{glass};
    EXPECT_TRUE(cut.isCutAlready());
    cut.setFrame({0, 0, 100, 100});
    const QImage sticker = cut.sticker();
    EXPECT_NEAR(sticker.width(), 180, 12);
    EXPECT_NEAR(sticker.height(), 90, 12);
    EXPECT_EQ(sticker.pixelColor(90, 45), (QColor{10, 120, 200}));
}

TEST_F(CutOutTest, NothingToCutLeavesNoSticker) {
    EXPECT_TRUE(cut_.sticker().isNull());
    cut_.setFrame({2000, 2000, 50, 50});
    EXPECT_TRUE(cut_.sticker().isNull());
    EXPECT_TRUE(cut_.outline().isEmpty());
    for (const QSize size : {QSize{1, 1}, QSize{1, 900}}) {
        QImage small{size, QImage::Format_RGB32};
        small.fill(Qt::darkYellow);
        CutOut cut{small};
        cut.setFrame({-5, -5, 2000, 2000});
        cut.scribble(std::array{QPointF{-9, 4}}, 0, CutOut::Scribble::drop);
        EXPECT_EQ(cut.isCutAlready(), false);
    }
}

} // namespace
} // namespace lumaro
