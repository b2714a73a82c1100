// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/FaceProvider.h"

#include <QtCore/QFileInfo>
#include <QtGui/QImageReader>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>

namespace lumaro {
namespace {

constexpr int usualSide = 96;
constexpr int largestSide = 512;

// The middle of the picture, scaled to cover a square of this side while it is read.
QImage squareOf(const QString& path, int side) {
    if (QFileInfo{path}.size() > FaceProvider::maxBytes) return {};
    QImageReader reader{path};
    reader.setAutoTransform(true);
    const QSize natural = reader.size();
    if (natural.isEmpty()) return {};
    reader.setScaledSize(natural.scaled(side, side, Qt::KeepAspectRatioByExpanding));
    const QImage picture = reader.read();
    return picture.copy((picture.width() - side) / 2, (picture.height() - side) / 2, side, side);
}

} // namespace

QUrl FaceProvider::urlOf(const QString& path) {
    const auto id = path.toUtf8().toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
    return QUrl{QStringLiteral("image://%1/%2").arg(QLatin1String{name}, QLatin1String{id})};
}

QImage FaceProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const int wanted = requestedSize.width() > 0 ? requestedSize.width() : usualSide;
    const int side = std::min(wanted, largestSide);
    const auto path = QByteArray::fromBase64(id.toLatin1(), QByteArray::Base64UrlEncoding);
    const QImage square = squareOf(QString::fromUtf8(path), side);
    if (square.isNull()) return {};
    QImage face{side, side, QImage::Format_ARGB32_Premultiplied};
    face.fill(Qt::transparent);
    QPainter painter{&face};
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath round;
    round.addEllipse(face.rect());
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush{square});
    painter.drawPath(round);
    if (size != nullptr) *size = face.size();
    return face;
}

} // namespace lumaro
