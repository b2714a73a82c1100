// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRectF>
#include <QtGui/QColor>
#include <QtGui/QImage>

#include <cstddef>
#include <vector>

class QPainterPath;

namespace lumaro {

/// How much of each pixel something covers, 0 to 1.
class Mask {
public:
    Mask(int width, int height);

    /// What `path` covers of `area`, at so many pixels a point.
    static Mask of(const QPainterPath& path, const QRectF& area, double density);
    /// The opacity of a picture.
    static Mask of(const QImage& picture);

    /// Softens by about a Gaussian bell of this width, in pixels.
    void blur(double sigma);
    /// Coverage from 0 at `low` to 1 at `high`, and straight between.
    void sharpen(double low, double high);

    float at(int x, int y) const {
        return values_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
    }
    /// A picture of one colour.
    QImage tinted(const QColor& colour) const;

private:
    void blurRows(int reach);
    void transpose();

    int width_;
    int height_;
    std::vector<float> values_;
};

} // namespace lumaro
