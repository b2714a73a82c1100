// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/AutostartEntry.h"

#include "LumaroCore/Outbox/ReplaceFile.h"
#include "Platform/Linux/DesktopEntry.h"

#include <QStandardPaths>

namespace lumaro {
namespace {

std::string entryOf(const AutostartEntry::Program& program) {
    return "[Desktop Entry]\nType=Application\nName=" + program.name + "\nExec=" + execValue(program.command) +
           "\nIcon=app.lumaro.Lumaro\nTerminal=false\nStartupNotify=false\n";
}

std::unexpected<std::string> failure(const FileError& error) {
    return std::unexpected(error.path + ": " + error.message);
}

} // namespace

std::string AutostartEntry::userFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() + "/autostart";
}

bool AutostartEntry::isEnabled() {
    const auto entry = files_.readFile(folder_ + "/" + fileName());
    return entry && !hasLine(*entry, "Hidden=true") && !hasLine(*entry, "X-GNOME-Autostart-enabled=false");
}

std::expected<void, std::string> AutostartEntry::enable() {
    if (const auto done = replaceFile(files_, folder_, fileName(), entryOf(program_)); !done) {
        return failure(done.error());
    }
    return {};
}

std::expected<void, std::string> AutostartEntry::disable() {
    const auto done = files_.removeFile(folder_ + "/" + fileName());
    if (!done && done.error().fault != FileFault::notFound) return failure(done.error());
    return {};
}

} // namespace lumaro
