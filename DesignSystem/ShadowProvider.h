// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQuick/QQuickImageProvider>

namespace lumaro {

/// Shadows of paper as pictures to be stretched in nine parts, made once for each kind: "image://shadow/14/8?3b2e22" is
/// that of a sheet with corners of 14 that lies 8 above what is behind it. The light comes from the top left, so the
/// picture holds a narrow contact shadow and a wide ambient one, both pushed away from it. The sheet itself is
/// `2 * height` inside of the picture's edges.
class ShadowProvider final : public QQuickImageProvider {
public:
    static constexpr const char* name = "shadow";

    ShadowProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace lumaro
