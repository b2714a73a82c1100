// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QTranslator>

namespace lumaro {

/// The English texts as they are read on this system: where it is not the one that they were written for, they speak of
/// "this computer". Lies under the translations of other languages, and serves `qsTr` and `Words` alike.
class SystemWords final : public QTranslator {
    Q_OBJECT

public:
    using QTranslator::QTranslator;

    QString translate(const char* context, const char* source, const char* disambiguation, int n) const override;
    bool isEmpty() const override { return false; }

    /// For the whole program, from now on, unless this is the system of the texts.
    static void install();
};

} // namespace lumaro
