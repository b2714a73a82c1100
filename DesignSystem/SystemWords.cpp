// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/SystemWords.h"

#include "LumaroCore/Support/ThisComputer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSysInfo>

namespace lumaro {

QString SystemWords::translate(const char* /*context*/, const char* source, const char* /*disambiguation*/,
                               int /*n*/) const {
    const std::string_view text{source};
    if (text.find(textsComputer) == std::string_view::npos) return {};
    return QString::fromStdString(onAnyComputer(text));
}

void SystemWords::install() {
    if (QSysInfo::kernelType() == QStringLiteral("darwin")) return;
    QCoreApplication::installTranslator(new SystemWords{QCoreApplication::instance()});
}

} // namespace lumaro
