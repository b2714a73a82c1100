// SPDX-License-Identifier: Apache-2.0
#include "Tests/Pictures/CutOutScenes.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

using Subject = CutOutScene::Subject;

// The scene is drawn on 800 by 600 points.
class Painting {
public:
    Painting(Subject subject, unsigned seed, QSize size) : subject_(subject), random_(seed * 3 + unsigned(subject)) {
        photo_ = QImage{size, QImage::Format_RGB32};
        truth_ = QImage{size, QImage::Format_Grayscale8};
        truth_.fill(0);
        scale_ = size.width() / 800.0;
    }

    CutOutScene made() {
        paintRoom();
        shape();
        paintShadow();
        paintSubject();
        addGrain();
        return {photo_, truth_};
    }

private:
    double within(double low, double high) {
        return low + (high - low) * static_cast<double>(random_() % 10000) / 10000;
    }
    QColor colour(double hue, double spread, double low, double high, double saturation) {
        double turned = hue + within(-spread, spread);
        turned -= std::floor(turned);
        return QColor::fromHsvF(float(turned), float(saturation * within(0.6, 1.3)), float(within(low, high)));
    }
    void prepare(QPainter& painter) const {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale_, scale_);
        painter.setPen(Qt::NoPen);
    }

    void paintRoom() {
        QPainter on{&photo_};
        prepare(on);
        const QColor wall = colour(0.12, 0.5, 0.55, 0.9, 0.16);
        QLinearGradient light{0, 0, within(200, 800), within(300, 600)};
        light.setColorAt(0, wall.lighter(112));
        light.setColorAt(1, wall.darker(128));
        on.fillRect(QRectF{0, 0, 800, 600}, light);
        for (int i = 0; i < 5; ++i) { // things far behind, out of focus
            const QPointF at{within(0, 800), within(0, 350)};
            const double reach = within(80, 220);
            QRadialGradient glow{at, reach};
            const QColor tone = within(0, 1) > 0.5 ? wall.lighter(125) : wall.darker(125);
            glow.setColorAt(0, QColor{tone.red(), tone.green(), tone.blue(), 90});
            glow.setColorAt(1, QColor{tone.red(), tone.green(), tone.blue(), 0});
            on.fillRect(QRectF{0, 0, 800, 600}, glow);
        }
        if (subject_ == Subject::person) return;
        const double horizon = within(380, 440);
        const QColor table = colour(0.08, 0.06, 0.4, 0.75, 0.4);
        QLinearGradient top{0, horizon - 6, 0, 600};
        top.setColorAt(0, QColor{table.red(), table.green(), table.blue(), 0});
        top.setColorAt(0.06, table);
        top.setColorAt(1, table.darker(116));
        on.fillRect(QRectF{0, horizon - 6, 800, 606 - horizon}, top);
    }

    void part(const QPainterPath& path, const QColor& paint) {
        parts_.emplace_back(path, paint);
        outline_ = outline_.united(path);
    }
    void shape() {
        switch (subject_) {
        case Subject::person: return shapePerson();
        case Subject::cat: return shapeCat();
        case Subject::cup: return shapeCup();
        }
    }

    static QPainterPath oval(double x, double y, double rx, double ry) {
        QPainterPath path;
        path.addEllipse(QPointF{x, y}, rx, ry);
        return path;
    }

    void shapePerson() {
        const double x = within(300, 500);
        const QColor skin =
            QColor::fromHsvF(float(within(0.04, 0.08)), float(within(0.3, 0.55)), float(within(0.45, 0.95)));
        const QColor hair =
            QColor::fromHsvF(float(within(0.03, 0.1)), float(within(0.3, 0.7)), float(within(0.08, 0.45)));
        const QColor shirt = colour(0.5, 0.5, 0.25, 0.8, 0.6);
        part(oval(x, 200, 92, 112), hair);
        QPainterPath locks;
        locks.addRoundedRect(QRectF{x - 92, 200, 184, 120}, 50, 50);
        part(locks, hair);
        QPainterPath neck;
        neck.addRoundedRect(QRectF{x - 34, 280, 68, 110}, 20, 20);
        part(neck, skin.darker(112));
        QPainterPath body{{x - 190, 620}};
        body.cubicTo(x - 190, 430, x - 130, 375, x, 370);
        body.cubicTo(x + 130, 375, x + 190, 430, x + 190, 620);
        body.closeSubpath();
        part(body, shirt);
        part(oval(x, 222, 66, 86), skin);
        for (const double side : {-1.0, 1.0}) part(oval(x + side * 26, 208, 9, 6), hair.darker(130));
        part(oval(x, 262, 20, 6), QColor{150, 70, 70});
    }

    void shapeCat() {
        const double x = within(280, 480);
        const bool isGrey = within(0, 1) > 0.5;
        const QColor fur = QColor::fromHsvF(float(within(0.05, 0.1)), isGrey ? 0.08F : float(within(0.5, 0.8)),
                                            float(isGrey ? within(0.12, 0.4) : within(0.5, 0.9)));
        QPainterPath tail{{x + 90, 470}};
        tail.cubicTo(x + 240, 500, x + 270, 330, x + 190, 290);
        QPainterPathStroker thick;
        thick.setWidth(34);
        thick.setCapStyle(Qt::RoundCap);
        part(thick.createStroke(tail), fur.darker(115));
        part(oval(x, 410, 120, 120), fur);
        for (const double side : {-1.0, 1.0}) {
            QPainterPath ear{{x + side * 78, 240}};
            ear.lineTo(x + side * 74, 130);
            ear.lineTo(x + side * 14, 184);
            ear.closeSubpath();
            part(ear, fur.darker(108));
            part(oval(x + side * 52, 512, 40, 24), fur.lighter(115));
        }
        part(oval(x, 250, 88, 80), fur);
        for (int i = 0; i < 5; ++i) part(oval(x, 350 + 34 * i, 96 - 9 * i, 7), fur.darker(150));
        for (const double side : {-1.0, 1.0}) part(oval(x + side * 34, 240, 13, 15), QColor{190, 200, 70});
        part(oval(x, 275, 9, 7), QColor{190, 120, 120});
    }

    void shapeCup() {
        const double x = within(300, 460);
        const QColor glaze = colour(0.5, 0.5, 0.35, 0.97, 0.5);
        QPainterPath handle;
        handle.addEllipse(QPointF{x + 120, 390}, 70, 80);
        QPainterPath hole;
        hole.addEllipse(QPointF{x + 122, 390}, 42, 52);
        part(handle.subtracted(hole), glaze.darker(112));
        QPainterPath body{{x - 120, 280}};
        body.cubicTo(x - 118, 430, x - 100, 520, x - 70, 530);
        body.lineTo(x + 70, 530);
        body.cubicTo(x + 100, 520, x + 118, 430, x + 120, 280);
        body.closeSubpath();
        part(body, glaze);
        part(oval(x, 280, 120, 30), glaze.lighter(110));
        part(oval(x, 284, 104, 22), QColor{70, 44, 30});
    }

    void paintShadow() {
        QPainter on{&photo_};
        prepare(on);
        const QRectF box = outline_.boundingRect();
        const bool hangsOnWall = subject_ == Subject::person;
        const QPointF at = hangsOnWall ? QPointF{box.center().x() + 70, box.center().y()}
                                       : QPointF{box.center().x() + 50, box.bottom() - 4};
        on.translate(at);
        if (!hangsOnWall) on.scale(1, 0.22);
        const double reach = box.width() * 0.72;
        QRadialGradient shade{QPointF{0, 0}, reach};
        shade.setColorAt(0, QColor{20, 14, 10, int(within(70, 120))});
        shade.setColorAt(1, QColor{20, 14, 10, 0});
        on.setBrush(shade);
        on.drawEllipse(QPointF{0, 0}, reach, reach);
    }

    void paintSubject() {
        QPainter on{&photo_};
        prepare(on);
        QPainter in{&truth_};
        prepare(in);
        for (const auto& [path, paint] : parts_) {
            const QRectF box = path.boundingRect();
            QLinearGradient light{box.topLeft(), box.bottomRight()};
            light.setColorAt(0, paint.lighter(118));
            light.setColorAt(1, paint.darker(122));
            on.fillPath(path, light);
            in.fillPath(path, Qt::white);
        }
    }

    void addGrain() {
        std::normal_distribution<double> noise{0, 6};
        for (int y = 0; y < photo_.height(); ++y) {
            auto* const row = reinterpret_cast<QRgb*>(photo_.scanLine(y));
            for (int x = 0; x < photo_.width(); ++x) {
                const int light = static_cast<int>(noise(random_));
                const auto grain = [&](int value) {
                    return std::clamp(value + light + static_cast<int>(noise(random_) / 2), 0, 255);
                };
                row[x] = qRgb(grain(qRed(row[x])), grain(qGreen(row[x])), grain(qBlue(row[x])));
            }
        }
    }

    Subject subject_;
    std::mt19937 random_;
    QImage photo_;
    QImage truth_;
    double scale_ = 1;
    std::vector<std::pair<QPainterPath, QColor>> parts_;
    QPainterPath outline_;
};

} // namespace

CutOutScene CutOutScene::make(Subject subject, unsigned seed, int width) {
    becomeApplication();
    return Painting{subject, seed, {width, width * 3 / 4}}.made();
}

void becomeApplication() {
    if (QCoreApplication::instance() != nullptr) return;
    static int count = 0;
    static QCoreApplication application{count, nullptr};
}

double likeness(const QImage& mask, const QImage& truth) {
    const QImage sized = mask.scaled(truth.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int both = 0;
    int either = 0;
    for (int y = 0; y < truth.height(); ++y) {
        for (int x = 0; x < truth.width(); ++x) {
            const bool isCut = qGray(sized.pixel(x, y)) >= 128;
            const bool isWanted = qGray(truth.pixel(x, y)) >= 128;
            both += isCut && isWanted ? 1 : 0;
            either += isCut || isWanted ? 1 : 0;
        }
    }
    return either == 0 ? 1 : double(both) / either;
}

} // namespace lumaro
