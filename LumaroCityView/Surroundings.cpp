// SPDX-License-Identifier: Apache-2.0
#include "LumaroCityView/Surroundings.h"

#include <QByteArray>

#include <unistd.h>

namespace lumaro {

void prepareEnvironment(double scale) {
    for (const auto* name : {"QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI", "QTWEBENGINE_REMOTE_DEBUGGING",
                             "QTWEBENGINE_DISABLE_SANDBOX", "QTWEBENGINE_DICTIONARIES_PATH", "QT_PLUGIN_PATH"}) {
        qunsetenv(name);
    }
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    // Nothing is said to other programs; without an address a bus would be started.
    qputenv("QT_ACCESSIBILITY", "0");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    qputenv("MESA_SHADER_CACHE_DISABLE", "true");
    // A download begins before anybody is asked, in a folder that must not be there.
    qputenv("TMPDIR", "/nonexistent");
    // WebGL is wanted on every computer; the memory of a page's scripts is bounded.
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--ignore-gpu-blocklist --js-flags=--max-old-space-size=512");
    if (::geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

} // namespace lumaro
