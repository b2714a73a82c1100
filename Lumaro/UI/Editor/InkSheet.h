// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Editor/PenView.h"
#include "Widgets/Board/CanvasInView.h"

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace lumaro {

/// The ink of the doodle that is being drawn, over the whole board. While a line grows only its end is painted anew.
class InkSheet : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::PenView* pen READ pen WRITE setPen NOTIFY penChanged REQUIRED)
    Q_PROPERTY(bool dark MEMBER isDark_ NOTIFY canvasChanged)
    Q_PROPERTY(lumaro::CanvasInView canvas MEMBER canvas_ NOTIFY canvasChanged)

public:
    explicit InkSheet(QQuickItem* parent = nullptr);

    PenView* pen() const { return pen_; }
    void setPen(PenView* pen);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void penChanged();
    void canvasChanged();

private:
    void inkChanged();

    PenView* pen_ = nullptr;
    CanvasInView canvas_;
    bool isDark_ = false;
    std::size_t painted_ = 0; ///< samples of the growing line
};

} // namespace lumaro
