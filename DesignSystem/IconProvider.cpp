// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/IconProvider.h"

#include <QtCore/QFile>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

static void initIcons() {
    Q_INIT_RESOURCE(lumaro_icons);
}

namespace lumaro {
namespace {

constexpr int naturalSide = 24;

} // namespace

QImage IconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    initIcons();
    QFile file{QStringLiteral(":/lumaro/icons/%1.svg").arg(id.section(QLatin1Char{'?'}, 0, 0))};
    if (!file.open(QIODevice::ReadOnly)) return {};
    auto svg = file.readAll();
    const auto color = id.section(QLatin1Char{'?'}, 1);
    svg.replace("currentColor", '#' + (color.isEmpty() ? QByteArray{"3b322b"} : color.toLatin1()));
    QSvgRenderer renderer{svg};
    const int side = requestedSize.width() > 0 ? requestedSize.width() : naturalSide;
    QImage image{side, side, QImage::Format_ARGB32_Premultiplied};
    image.fill(Qt::transparent);
    QPainter painter{&image};
    renderer.render(&painter);
    if (size != nullptr) *size = image.size();
    return image;
}

} // namespace lumaro
