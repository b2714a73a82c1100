// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Editor/EditorView.h"

#include <QtCore/QObject>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickTextDocument>

namespace lumaro {

/// Fills a field with the selected note to be read, large, with its links and in the inks of its paper.
class NoteReading : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::EditorView* editor MEMBER editor_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QQuickTextDocument* document MEMBER document_ NOTIFY changed REQUIRED)
    Q_PROPERTY(double width MEMBER width_ NOTIFY changed)
    Q_PROPERTY(bool dark MEMBER isDark_ NOTIFY changed)
    Q_PROPERTY(QColor ink READ ink NOTIFY changed)
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed)

public:
    static constexpr double fontSize = 34; ///< points of the view

    using QObject::QObject;

    QColor ink() const { return ink_; }
    const QString& spoken() const { return spoken_; }
    Q_INVOKABLE void fill();

Q_SIGNALS:
    void changed();

private:
    EditorView* editor_ = nullptr;
    QQuickTextDocument* document_ = nullptr;
    double width_ = 0;
    bool isDark_ = false;
    QColor ink_;
    QString spoken_;
};

} // namespace lumaro
