// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Picture/PictureItem.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>

namespace lumaro {

/// A sample of a note's paper, or of what holds a note up, to choose by. Also lists what there is to choose from.
class NoteSwatch : public lumaro::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString paper MEMBER paper_ NOTIFY changed)
    Q_PROPERTY(QString pin MEMBER pin_ NOTIFY changed) ///< with one, it and no paper
    Q_PROPERTY(bool dark MEMBER isDark_ NOTIFY changed)
    Q_PROPERTY(bool isWhole MEMBER isWhole_ NOTIFY changed) ///< a sheet as large as the item, and no sample of one
    Q_PROPERTY(QColor ink READ ink NOTIFY changed)          ///< of letters on it, and of small print
    Q_PROPERTY(QColor smallInk READ smallInk NOTIFY changed)
    Q_PROPERTY(QStringList papers READ papers CONSTANT)
    Q_PROPERTY(QStringList pins READ pins CONSTANT)

public:
    explicit NoteSwatch(QQuickItem* parent = nullptr);

    static QStringList papers();
    static QStringList pins();
    QColor ink() const;
    QColor smallInk() const;
    void paint(QPainter& painter) override;

Q_SIGNALS:
    void changed();

private:
    QString paper_;
    QString pin_;
    bool isDark_ = false;
    bool isWhole_ = false;
};

} // namespace lumaro
