// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Offline/PlayedHands.h"

#include "Lumaro/UI/Text.h"

#include <QtCore/QMimeData>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace lumaro {

void pressKeys(QQuickWindow& window, const QString& keys) {
    int wait = 1000;
    for (const auto& name : keys.split(QLatin1Char{','}, Qt::SkipEmptyParts)) {
        const auto sequence = QKeySequence::fromString(name.trimmed());
        if (sequence.isEmpty()) continue;
        QTimer::singleShot(wait, &window, [&window, key = sequence[0]] {
            for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                const bool isLetter = key.key() < 0x80 && key.keyboardModifiers() == Qt::NoModifier;
                QKeyEvent event{type, key.key(), key.keyboardModifiers(),
                                isLetter ? QString{QChar{static_cast<char16_t>(key.key())}}.toLower() : QString{}};
                QCoreApplication::sendEvent(&window, &event);
            }
        });
        wait += 150;
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
