// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Offline/DemoPictures.h"

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <array>
#include <cmath>

namespace lumaro {
namespace {

std::string file(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer{&bytes};
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 88);
    return bytes.toStdString();
}

QPainterPath hills(double width, double height, double base, double swing, double phase) {
    QPainterPath path{{0, height}};
    for (double x = 0; x <= width; x += 8) {
        path.lineTo(x, base - swing * (std::sin(x / 190 + phase) + 0.45 * std::sin(x / 71 + 2 * phase)));
    }
    path.lineTo(width, height);
    path.closeSubpath();
    return path;
}

void paintLake(QPainter& painter, double w, double h) {
    QLinearGradient sky{0, 0, 0, h * 0.62};
    sky.setColorAt(0, QColor{0x5E7FA6});
    sky.setColorAt(0.55, QColor{0xF0B58C});
    sky.setColorAt(1, QColor{0xFBDDA8});
    painter.fillRect(QRectF{0, 0, w, h}, sky);
    QRadialGradient sun{w * 0.62, h * 0.5, w * 0.3};
    sun.setColorAt(0, QColor{255, 243, 208, 255});
    sun.setColorAt(0.18, QColor{255, 232, 180, 230});
    sun.setColorAt(1, QColor{255, 220, 170, 0});
    painter.fillRect(QRectF{0, 0, w, h}, sun);
    painter.fillPath(hills(w, h, h * 0.56, h * 0.05, 0.4), QColor{0x7D6E86});
    painter.fillPath(hills(w, h, h * 0.6, h * 0.03, 2.2), QColor{0x4F4A63});
    QLinearGradient water{0, h * 0.62, 0, h};
    water.setColorAt(0, QColor{0xE9B893});
    water.setColorAt(1, QColor{0x3E5470});
    painter.fillRect(QRectF{0, h * 0.62, w, h}, water);
    for (int i = 0; i < 26; ++i) {
        const double y = h * (0.63 + 0.36 * i / 26.0);
        const double length = w * (0.04 + 0.012 * i) * (1 + 0.4 * std::sin(i * 3.7));
        painter.setPen(QPen{QColor{255, 236, 196, 110 - 3 * i}, 2.0 + i * 0.12, Qt::SolidLine, Qt::RoundCap});
        const double x = w * 0.62 + w * 0.03 * std::sin(i * 2.1) - length / 2;
        painter.drawLine(QPointF{x, y}, QPointF{x + length, y});
    }
}

void paintRain(QPainter& painter, double w, double h) {
    QLinearGradient dusk{0, 0, 0, h};
    dusk.setColorAt(0, QColor{0x39435C});
    dusk.setColorAt(1, QColor{0x6D6A7C});
    painter.fillRect(QRectF{0, 0, w, h}, dusk);
    for (int i = 0; i < 7; ++i) {
        const double x = w * i / 6.0 - w * 0.08;
        const double top = h * (0.24 + 0.12 * std::sin(i * 2.3));
        painter.fillRect(QRectF{x, top, w * 0.15, h * 0.52 - (top - h * 0.24)},
                         QColor{0x2B3144}.lighter(100 + 6 * (i % 3)));
        for (int lamp = 0; lamp < 8; ++lamp) {
            if ((lamp * 7 + i * 5) % 3 == 0) continue;
            painter.fillRect(
                QRectF{x + w * (0.02 + 0.055 * (lamp % 2)), top + h * (0.04 + 0.085 * (lamp / 2)), w * 0.03, h * 0.04},
                QColor{0xF3C778});
        }
    }
    QLinearGradient street{0, h * 0.74, 0, h};
    street.setColorAt(0, QColor{0x2A3042});
    street.setColorAt(1, QColor{0x4B4A5C});
    painter.fillRect(QRectF{0, h * 0.74, w, h}, street);
    for (int i = 0; i < 12; ++i) {
        painter.setPen(QPen{QColor{243, 199, 120, 70}, w * 0.02, Qt::SolidLine, Qt::RoundCap});
        const double x = w * (0.05 + 0.085 * i);
        painter.drawLine(QPointF{x, h * 0.77}, QPointF{x + w * 0.01, h * (0.84 + 0.1 * std::abs(std::sin(i * 1.9)))});
    }
    painter.setPen(QPen{QColor{220, 228, 240, 80}, 2});
    for (int i = 0; i < 120; ++i) {
        const double x = std::fmod(i * 97.3, w);
        const double y = std::fmod(i * 53.9, h);
        painter.drawLine(QPointF{x, y}, QPointF{x - 6, y + 26});
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor{0xB5472F});
    QPainterPath umbrella{{w * 0.36, h * 0.72}};
    umbrella.cubicTo({w * 0.38, h * 0.58}, {w * 0.58, h * 0.58}, {w * 0.6, h * 0.72});
    umbrella.closeSubpath();
    painter.drawPath(umbrella);
    painter.setPen(QPen{QColor{0x1F2330}, 7, Qt::SolidLine, Qt::RoundCap});
    painter.drawLine(QPointF{w * 0.48, h * 0.72}, QPointF{w * 0.48, h * 0.9});
}

void paintTable(QPainter& painter, double w, double h) {
    QLinearGradient table{0, 0, w, h};
    table.setColorAt(0, QColor{0xE3C9A4});
    table.setColorAt(1, QColor{0xC39B6C});
    painter.fillRect(QRectF{0, 0, w, h}, table);
    for (int i = 0; i < 22; ++i) {
        painter.setPen(QPen{QColor{120, 82, 46, 36}, 3});
        painter.drawLine(QPointF{0, h * i / 21.0}, QPointF{w, h * i / 21.0 + 14 * std::sin(i * 1.3)});
    }
    painter.setPen(Qt::NoPen);
    const auto cup = [&](double x, double y, double r, QColor coffee) {
        painter.setBrush(QColor{70, 44, 20, 60});
        painter.drawEllipse(QPointF{x + r * 0.16, y + r * 0.2}, r * 1.42, r * 1.42);
        painter.setBrush(QColor{0xF7EEDF});
        painter.drawEllipse(QPointF{x, y}, r * 1.4, r * 1.4);
        painter.setBrush(QColor{0xE9DCC6});
        painter.drawEllipse(QPointF{x, y}, r * 1.05, r * 1.05);
        painter.setBrush(QColor{0xFFF9EE});
        painter.drawEllipse(QPointF{x, y}, r, r);
        painter.setBrush(coffee);
        painter.drawEllipse(QPointF{x, y}, r * 0.84, r * 0.84);
    };
    cup(w * 0.36, h * 0.42, w * 0.16, QColor{0x6B4226});
    cup(w * 0.68, h * 0.63, w * 0.15, QColor{0xB98A5A});
    painter.setBrush(QColor{0x86A06A});
    for (int i = 0; i < 7; ++i) {
        painter.save();
        painter.translate(w * 0.78, h * 0.2);
        painter.rotate(i * 51);
        painter.drawEllipse(QPointF{w * 0.07, 0}, w * 0.07, w * 0.022);
        painter.restore();
    }
}

} // namespace

std::string demoPhoto(int which, double aspect) {
    const QSizeF size{900 * std::sqrt(aspect), 900 / std::sqrt(aspect)};
    QImage image{size.toSize(), QImage::Format_RGB32};
    QPainter painter{&image};
    painter.setRenderHint(QPainter::Antialiasing);
    switch (which % 3) {
    case 0: paintLake(painter, size.width(), size.height()); break;
    case 1: paintRain(painter, size.width(), size.height()); break;
    default: paintTable(painter, size.width(), size.height()); break;
    }
    painter.end();
    return file(image, "JPG");
}

std::string demoCover() {
    constexpr double side = 512;
    QImage image{512, 512, QImage::Format_RGB32};
    QPainter painter{&image};
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient night{0, 0, 0, side};
    night.setColorAt(0, QColor{0x1F3352});
    night.setColorAt(0.6, QColor{0x3F6C86});
    night.setColorAt(1, QColor{0x24506B});
    painter.fillRect(image.rect(), night);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor{0xF6D98A});
    painter.drawEllipse(QPointF{350, 130}, 74, 74);
    painter.setBrush(QColor{0x29456A});
    painter.drawEllipse(QPointF{318, 112}, 64, 64);
    painter.fillPath(hills(side, side, 330, 12, 1.1), QColor{0x2E6079});
    for (const auto& [x, y, size] : {std::array{150.0, 330.0, 1.0}, std::array{340.0, 372.0, 0.7}}) {
        painter.save();
        painter.translate(x, y);
        painter.scale(size, size);
        painter.setBrush(QColor{0xFFF6E4});
        painter.drawPolygon(QPolygonF{{{-110, 0}, {110, 0}, {66, 56}, {-66, 56}}});
        painter.drawPolygon(QPolygonF{{{-62, 0}, {0, -96}, {62, 0}}});
        painter.setBrush(QColor{0xE8805F});
        painter.drawPolygon(QPolygonF{{{0, -96}, {62, 0}, {0, 0}}});
        painter.restore();
    }
    painter.fillPath(hills(side, side, 410, 14, 3.4), QColor{0x1E4A66});
    painter.end();
    return file(image, "JPG");
}

std::string demoSticker() {
    QImage image{480, 520, QImage::Format_ARGB32_Premultiplied};
    image.fill(Qt::transparent);
    QPainter painter{&image};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QColor fur{0xD98E4F};
    const QColor stripe{0xB46D33};
    painter.setBrush(fur);
    painter.drawEllipse(QPointF{240, 380}, 150, 130);
    QPainterPath tail{{360, 430}};
    tail.cubicTo({470, 430}, {470, 290}, {410, 270});
    painter.strokePath(tail, QPen{fur, 40, Qt::SolidLine, Qt::RoundCap});
    for (const double side : {-1.0, 1.0}) {
        QPolygonF ear{{QPointF{240 + side * 118, 60}, QPointF{240 + side * 128, 190}, QPointF{240 + side * 40, 120}}};
        painter.setBrush(fur);
        painter.drawPolygon(ear);
        painter.setBrush(QColor{0xF3C6A5});
        painter.drawPolygon(
            QPolygonF{{QPointF{240 + side * 108, 92}, QPointF{240 + side * 112, 164}, QPointF{240 + side * 64, 124}}});
    }
    painter.setBrush(fur);
    painter.drawEllipse(QPointF{240, 190}, 132, 112);
    painter.setBrush(QColor{0xFBEBD6});
    painter.drawEllipse(QPointF{240, 232}, 66, 48);
    painter.drawEllipse(QPointF{240, 430}, 78, 78);
    painter.setBrush(stripe);
    for (const double x : {-34.0, 0.0, 34.0}) painter.drawRoundedRect(QRectF{232 + x, 86, 16, 46}, 8, 8);
    painter.setBrush(QColor{0x3B322B});
    painter.drawEllipse(QPointF{190, 190}, 15, 19);
    painter.drawEllipse(QPointF{290, 190}, 15, 19);
    painter.setBrush(QColor{0xFFF8EA});
    painter.drawEllipse(QPointF{195, 183}, 5, 6);
    painter.drawEllipse(QPointF{295, 183}, 5, 6);
    painter.setBrush(QColor{0xC8705A});
    painter.drawEllipse(QPointF{240, 216}, 12, 9);
    painter.setPen(QPen{QColor{0x3B322B}, 5, Qt::SolidLine, Qt::RoundCap});
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF{212, 212, 28, 30}, 200 * 16, 150 * 16);
    painter.drawArc(QRectF{240, 212, 28, 30}, 190 * 16, 150 * 16);
    painter.end();
    return file(image, "PNG");
}

} // namespace lumaro
