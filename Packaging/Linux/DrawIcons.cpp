// SPDX-License-Identifier: Apache-2.0
// Draws the program's picture in the sizes that desktops look for: DrawIcons PICTURE.svg FOLDER SIZE..., into
// FOLDER/SIZE.png.
#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

#include <cstdlib>
#include <iostream>
#include <span>

int main(int argc, char** argv) {
    const std::span arguments{argv, static_cast<std::size_t>(argc)};
    if (arguments.size() < 4) {
        std::cerr << "usage: draw-icons PICTURE.svg FOLDER SIZE...\n";
        return EXIT_FAILURE;
    }
    QSvgRenderer picture{QString::fromLocal8Bit(arguments[1])};
    for (const char* const text : arguments.subspan(3)) {
        const int size = std::atoi(text);
        QImage icon{size, size, QImage::Format_ARGB32_Premultiplied};
        icon.fill(Qt::transparent);
        QPainter painter{&icon};
        picture.render(&painter);
        painter.end();
        const auto file =
            QString::fromLocal8Bit(arguments[2]) + QLatin1Char{'/'} + QString::number(size) + QStringLiteral(".png");
        if (!picture.isValid() || !icon.save(file)) {
            std::cerr << "draw-icons: " << file.toStdString() << " cannot be drawn\n";
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
