// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Windows/FrameLog.h"

#include "LumaroCore/Support/Sleeper.h"

#include <QtCore/QFile>
#include <QtQuick/QQuickWindow>

#include <chrono>
#include <memory>

namespace lumaro {
namespace {

Seconds steadyNow() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

} // namespace

void logFrames(QQuickWindow& window) {
    const auto path = qEnvironmentVariable("LUMARO_FRAMES");
    if (path.isEmpty()) return;
    const auto file = std::make_shared<QFile>(path);
    if (!file->open(QIODevice::Append | QIODevice::Unbuffered)) return;
    // Both are heard on the thread that draws.
    const auto begun = std::make_shared<Seconds>();
    QObject::connect(&window, &QQuickWindow::beforeSynchronizing, [begun] { *begun = steadyNow(); });
    QObject::connect(&window, &QQuickWindow::frameSwapped, [file, begun, title = window.title().toUtf8()] {
        const auto now = steadyNow();
        file->write(QByteArray::number(now.count(), 'f', 6) + ' ' + QByteArray::number((now - *begun).count(), 'f', 6) +
                    ' ' + title + '\n');
    });
}

} // namespace lumaro
