// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Picture/PictureItem.h"

#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// The pane of glass with the board's paper behind it. `background` is a paper's name, `butter` for any other. In the
/// dark appearance the room's light is dimmed; colours keep their hue.
// The tools of QML look for the base by its whole name.
class BoardBackground : public lumaro::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString background READ background WRITE setBackground NOTIFY backgroundChanged)
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY darkChanged)

public:
    explicit BoardBackground(QQuickItem* parent = nullptr);

    const QString& background() const { return background_; }
    void setBackground(const QString& background);
    bool isDark() const { return isDark_; }
    void setDark(bool isDark);

    void paint(QPainter& painter) override;

Q_SIGNALS:
    void backgroundChanged();
    void darkChanged();

private:
    QString background_ = QStringLiteral("butter");
    bool isDark_ = false;
};

} // namespace lumaro
