// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Offline/PlayedHands.h"

#include "Lumaro/UI/Text.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace lumaro {

void press(QQuickWindow& window, const std::string& keys) {
    window.requestActivate();
    const auto names = qText(std::string_view{keys}).split(u',', Qt::SkipEmptyParts);
    for (const auto& name : names) {
        const QKeySequence sequence{name.trimmed()};
        if (sequence.isEmpty()) continue;
        const auto combination = sequence[0];
        const auto text = name.trimmed().size() == 1 ? name.trimmed().toLower() : QString{};
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event{type, combination.key(), combination.keyboardModifiers(), text};
            QCoreApplication::sendEvent(&window, &event);
        }
    }
}

void drag(QQuickWindow& window, const std::string& what) {
    if (what.empty()) return;
    QMimeData data;
    if (what == "words") {
        data.setText(QStringLiteral("buy oranges"));
    } else {
        data.setUrls({QUrl::fromLocalFile(qText(std::string_view{what}))});
    }
    QDragEnterEvent enter{window.contentItem()->boundingRect().center().toPoint(), Qt::CopyAction, &data,
                          Qt::LeftButton, Qt::NoModifier};
    QCoreApplication::sendEvent(&window, &enter);
}

} // namespace lumaro
