// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QUrl>
#include <QtQuick/QQuickImageProvider>

namespace lumaro {

/// Pictures of people from files of this computer, cut to a round face. What is no picture, or one of more than
/// `maxBytes`, gives an empty one. Load them with `asynchronous: true`: they are decoded where they are asked for.
class FaceProvider final : public QQuickImageProvider {
public:
    static constexpr const char* name = "face";
    static constexpr qint64 maxBytes = qint64{16} << 20;

    /// Where the face in the file is found.
    static QUrl urlOf(const QString& path);

    FaceProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace lumaro
