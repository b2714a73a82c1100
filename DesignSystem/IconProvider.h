// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQuick/QQuickImageProvider>

namespace lumaro {

/// The line icons, in any colour: "image://icon/pen?3b322b" is the pen in that ink. Unknown names give an empty
/// picture.
class IconProvider final : public QQuickImageProvider {
public:
    static constexpr const char* name = "icon";

    IconProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace lumaro
