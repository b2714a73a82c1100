// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace lumaro {

/// A text as a QR code with a quiet zone of four modules, one pixel for each module: 0 is paper, 1 is ink. Null when
/// the text is empty, or longer than any code holds.
QImage qrImage(const QString& text);

/// A QR code for a phone's camera. Its modules are of whole pixels, so it is as large as fits and stands in the middle.
class QrCode : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QColor ink READ ink WRITE setInk NOTIFY coloursChanged)
    Q_PROPERTY(QColor paper READ paper WRITE setPaper NOTIFY coloursChanged)

public:
    explicit QrCode(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    QString text() const { return text_; }
    QColor ink() const { return ink_; }
    QColor paper() const { return paper_; }
    void setText(const QString& text);
    void setInk(const QColor& ink);
    void setPaper(const QColor& paper);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void textChanged();
    void coloursChanged();

private:
    QString text_;
    QImage modules_;
    QColor ink_{QStringLiteral("#3b2f2a")};
    QColor paper_{QStringLiteral("#fffaf0")};
};

} // namespace lumaro
