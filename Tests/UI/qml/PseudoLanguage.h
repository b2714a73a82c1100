// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>
#include <QtCore/QTranslator>
#include <QtQuick/QQuickItem>

namespace lumaro {

/// A language in which every text is in brackets, has accents and is about 40 % longer than in English.
class PseudoLanguage final : public QTranslator {
    Q_OBJECT

public:
    using QTranslator::QTranslator;

    QString translate(const char* context, const char* source, const char* disambiguation, int n) const override;
    bool isEmpty() const override { return false; }
};

/// How many texts are in sight under `root`.
int textsSeen(QQuickItem& root);

/// What is wrong with the texts in sight under `root` while `PseudoLanguage` is spoken: those that are not in it,
/// unless they match one of the patterns in `own` as a whole (what people wrote, numbers, keys), and those that are cut
/// off, stick out of what they stand on, or lie over each other. What a screen reader says is looked at as well.
QStringList textFaults(QQuickItem& root, const QStringList& own);

} // namespace lumaro
