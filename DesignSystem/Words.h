// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QString>

#include <string>
#include <string_view>

namespace lumaro {

/// Where C++ turns texts into the language of the person, as QML does with `qsTr`: `Words::tr("quick note")`. The
/// English text is the key, and is shown where there is no translation; `SystemWords` puts in what this system is
/// called. A text with a count is two: the one for a single thing, and one with "%n" for the rest, of which a
/// translation may have as many forms as its language needs. On any thread.
class Words {
    Q_DECLARE_TR_FUNCTIONS(Words)

public:
    /// A text that a part without Qt made, as UTF-8.
    static QString of(std::string_view english) {
        return english.empty() ? QString{} : tr(std::string{english}.c_str());
    }
    /// The language of dates.
    static QLocale locale() { return QLocale{QLocale::English}; }
};

} // namespace lumaro
