// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Editor/EditorView.h"
#include "Widgets/Board/CanvasInView.h"

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace lumaro {

/// The ink of the doodle that is being drawn, over the whole board. While a line grows only its end is painted anew.
class InkSheet : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::EditorView* editor READ editor WRITE setEditor NOTIFY editorChanged REQUIRED)
    Q_PROPERTY(bool dark MEMBER isDark_ NOTIFY canvasChanged)
    Q_PROPERTY(lumaro::CanvasInView canvas MEMBER canvas_ NOTIFY canvasChanged)

public:
    explicit InkSheet(QQuickItem* parent = nullptr);

    EditorView* editor() const { return editor_; }
    void setEditor(EditorView* editor);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void editorChanged();
    void canvasChanged();

private:
    void inkChanged();

    EditorView* editor_ = nullptr;
    CanvasInView canvas_;
    bool isDark_ = false;
    std::size_t painted_ = 0; ///< points of the growing line
};

} // namespace lumaro
