// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/QrCode.h"

#include <QPainter>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <qrencode.h>

namespace lumaro {
namespace {

constexpr int quietZone = 4;

struct Freeing {
    void operator()(QRcode* code) const { QRcode_free(code); }
};

} // namespace

QImage qrImage(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const std::unique_ptr<QRcode, Freeing> code{QRcode_encodeData(
        static_cast<int>(bytes.size()), reinterpret_cast<const unsigned char*>(bytes.constData()), 0, QR_ECLEVEL_M)};
    if (!code) return {};
    const int side = code->width + 2 * quietZone;
    QImage image{side, side, QImage::Format_Mono};
    image.setColorTable({qRgb(255, 250, 240), qRgb(59, 47, 42)});
    image.fill(0);
    for (int y = 0; y < code->width; ++y) {
        for (int x = 0; x < code->width; ++x) {
            const auto module = code->data[static_cast<std::size_t>(y) * static_cast<std::size_t>(code->width) +
                                           static_cast<std::size_t>(x)];
            image.setPixel(x + quietZone, y + quietZone, module & 1U);
        }
    }
    return image;
}

void QrCode::setText(const QString& text) {
    if (text == text_) return;
    text_ = text;
    modules_ = qrImage(text);
    update();
    Q_EMIT textChanged();
}

void QrCode::setInk(const QColor& ink) {
    if (ink == ink_) return;
    ink_ = ink;
    update();
    Q_EMIT coloursChanged();
}

void QrCode::setPaper(const QColor& paper) {
    if (paper == paper_) return;
    paper_ = paper;
    update();
    Q_EMIT coloursChanged();
}

void QrCode::paint(QPainter* painter) {
    painter->fillRect(boundingRect(), paper_);
    if (modules_.isNull()) return;
    const qreal pixels = window() == nullptr ? 1 : window()->effectiveDevicePixelRatio();
    const auto whole = [pixels](qreal points) { return std::floor(points * pixels) / pixels; };
    const int count = modules_.width();
    const qreal module = whole(std::min(width(), height()) / count);
    if (module <= 0) return;
    QImage coloured = modules_;
    coloured.setColorTable({paper_.rgb(), ink_.rgb()});
    const qreal side = module * count;
    painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter->drawImage(QRectF{whole((width() - side) / 2), whole((height() - side) / 2), side, side}, coloured);
}

} // namespace lumaro
