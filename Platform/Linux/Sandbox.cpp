// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/Sandbox.h"

#include <QFile>

namespace lumaro {

SandboxSigns SandboxSigns::here() {
    return {.flatpakInfo = "/.flatpak-info",
            .snap = qEnvironmentVariable("SNAP").toStdString(),
            .program = QFile::symLinkTarget(QStringLiteral("/proc/self/exe")).toStdString()};
}

bool isInSandbox(const SandboxSigns& signs) {
    if (QFile::exists(QString::fromStdString(signs.flatpakInfo))) return true;
    return signs.snap.starts_with('/') && signs.program.starts_with(signs.snap + '/');
}

} // namespace lumaro
