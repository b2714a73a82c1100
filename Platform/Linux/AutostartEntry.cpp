// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/AutostartEntry.h"

#include "LumaroCore/Outbox/ReplaceFile.h"

#include <QStandardPaths>

#include <algorithm>
#include <string_view>

namespace lumaro {
namespace {

// One argument of an "Exec" line: in quotes, as a shell would read it, "%" doubled, and all that as a string of a
// desktop entry, which has escapes of its own.
std::string quoted(std::string_view argument) {
    std::string text{'"'};
    for (const char c : argument) {
        switch (c) {
        case '\\': text.append(R"(\\\\)"); break;
        case '"':
        case '`':
        case '$': text.append({'\\', '\\', c}); break;
        case '%': text.append("%%"); break;
        case '\n': text.append(R"(\n)"); break;
        default: text.push_back(c);
        }
    }
    return text + '"';
}

std::string entryOf(const AutostartEntry::Program& program) {
    std::string command;
    for (const auto& argument : program.command) command.append(command.empty() ? "" : " ").append(quoted(argument));
    return "[Desktop Entry]\nType=Application\nName=" + program.name + "\nExec=" + command +
           "\nIcon=app.lumaro.Lumaro\nTerminal=false\nStartupNotify=false\n";
}

bool hasLine(std::string_view text, std::string_view line) {
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        if (text.substr(0, end) == line) return true;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
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
