// SPDX-License-Identifier: Apache-2.0
#include "Tests/Fakes/KeptPicture.h"

#include <QtCore/QDir>
#include <QtCore/QPoint>
#include <QtGui/QColor>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>

namespace lumaro {
namespace {

// Golden pictures show a sheet at half its size, whatever the scale it was painted at.
constexpr double keptScale = 0.5;

struct Difference {
    double mean = 0;    ///< of a channel, 0 to 255
    double largest = 0; ///< of the average colour of a small square
    QPoint where;
};

// Letters and edges differ a little between scales; averages of small squares do not.
Difference compare(const QImage& a, const QImage& b) {
    constexpr int square = 8;
    Difference found;
    for (int top = 0; top + square <= a.height(); top += square) {
        for (int left = 0; left + square <= a.width(); left += square) {
            std::array<double, 3> sum{};
            for (int i = 0; i < square * square; ++i) {
                const QColor p = a.pixelColor(left + i % square, top + i / square);
                const QColor q = b.pixelColor(left + i % square, top + i / square);
                const std::array parts{p.red() - q.red(), p.green() - q.green(), p.blue() - q.blue()};
                for (std::size_t c = 0; c < parts.size(); ++c) sum[c] += parts[c];
                found.mean += std::abs(parts[0]) + std::abs(parts[1]) + std::abs(parts[2]);
            }
            const auto [low, high] = std::ranges::minmax(sum);
            const double here = std::max(-low, high) / (square * square);
            if (here > found.largest) found = {found.mean, here, {left, top}};
        }
    }
    found.mean /= 3.0 * a.width() * a.height();
    return found;
}

} // namespace

std::string differenceFromKept(const QImage& picture, double scale, const QString& name) {
    const QString path = QStringLiteral(LUMARO_GOLDEN_DIR "/%1.png").arg(name);
    const QSize size = (QSizeF{picture.size()} * (keptScale / scale)).toSize();
    QImage small =
        picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_RGB888);
    if (std::getenv("LUMARO_WRITE_GOLDEN") != nullptr && scale == 1) {
        // Without the last bits, which the eye does not see, the file is half as large.
        std::for_each_n(small.bits(), small.sizeInBytes(),
                        [](uchar& part) { part = static_cast<uchar>((part & 0xF8) | 4); });
        if (!small.save(path)) return "cannot be kept: " + path.toStdString();
    }
    const QImage kept{path};
    if (kept.size() != small.size()) return "another size than " + path.toStdString();
    const auto difference = compare(small, kept);
    const double most = scale == 1 ? 6 : 13;
    if (difference.mean <= 3 && difference.largest <= most) return {};
    const auto file = QString{name}.replace(QLatin1Char{'/'}, QLatin1Char{'-'});
    const auto seen = QDir::temp().filePath(QStringLiteral("lumaro-%1@%2.png").arg(file).arg(scale));
    picture.save(seen);
    std::ostringstream said;
    said << seen.toStdString() << " differs by " << difference.mean << ", and by " << difference.largest << " at "
         << difference.where.x() << ", " << difference.where.y();
    return std::move(said).str();
}

} // namespace lumaro
