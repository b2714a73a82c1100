// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/Module.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibrary>
#include <QtCore/QStringList>

namespace lumaro {

QFunctionPointer functionOfModule(const char* module, const char* function) {
    const auto program = QCoreApplication::applicationDirPath();
    QString why;
    for (const auto& folder : QStringLiteral(LUMARO_MODULE_FOLDERS).split(u':')) {
        QLibrary library{program + u'/' + folder + u'/' + QLatin1StringView{module}};
        // The programs and the modules share no symbols but Qt's.
        library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
        if (auto* const found = library.resolve(function)) return found;
        why = library.errorString();
    }
    qWarning("the module %s is not there: %s", module, qUtf8Printable(why));
    return nullptr;
}

} // namespace lumaro
