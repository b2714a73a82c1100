// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/UrlScheme.h"

#include "LumaroCore/Outbox/ReplaceFile.h"
#include "Platform/Linux/DesktopEntry.h"

#include <QStandardPaths>

#include <algorithm>
#include <string_view>

namespace lumaro {
namespace {

constexpr std::string_view installedEntry = "lumaro.desktop";
constexpr std::string_view ownEntry = "lumaro-url.desktop";
constexpr std::string_view mimeType = "x-scheme-handler/lumaro";
constexpr std::string_view defaultsGroup = "[Default Applications]";

std::string entryOf(const std::vector<std::string>& command) {
    return "[Desktop Entry]\nType=Application\nName=Lumaro\nExec=" + execValue(command) +
           " %u\nIcon=app.lumaro.Lumaro\nTerminal=false\nNoDisplay=true\nMimeType=" + std::string{mimeType} + ";\n";
}

// The list with this program for the links; as it was when it has one for them. Everything else in it stays.
std::string withDefault(std::string list) {
    const std::string entry = std::string{mimeType} + "=" + std::string{ownEntry} + ";\n";
    if (!list.empty() && !list.ends_with('\n')) list.push_back('\n');
    bool isInGroup = false;
    std::size_t place = std::string::npos;
    for (std::size_t start = 0; start < list.size();) {
        const auto end = list.find('\n', start);
        const std::string_view line{list.data() + start, end - start};
        start = end + 1;
        if (line.starts_with('[')) {
            isInGroup = line.starts_with(defaultsGroup);
            if (isInGroup && place == std::string::npos) place = start;
        } else if (isInGroup && line.starts_with(mimeType) && line.substr(mimeType.size()).starts_with('=')) {
            return list;
        }
    }
    if (place == std::string::npos) return list + std::string{defaultsGroup} + "\n" + entry;
    return list.insert(place, entry);
}

} // namespace

UrlScheme::Folders UrlScheme::userFolders() {
    Folders folders{
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString(),
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString(),
        {},
    };
    for (const auto& folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        if (folder.toStdString() != folders.data) folders.systemData.push_back(folder.toStdString());
    }
    return folders;
}

std::expected<void, std::string> UrlScheme::claim() {
    if (isInstalled()) return {};
    const auto failure = [](const FileError& error) { return std::unexpected(error.path + ": " + error.message); };
    if (const auto kept = keep(folders_.data + "/applications", std::string{ownEntry}, entryOf(command_)); !kept) {
        return failure(kept.error());
    }
    const std::string name = "mimeapps.list";
    const auto list = files_.readFile(folders_.config + "/" + name);
    if (!list && list.error().fault != FileFault::notFound) return failure(list.error());
    if (const auto kept = keep(folders_.config, name, withDefault(list.value_or(""))); !kept) {
        return failure(kept.error());
    }
    return {};
}

bool UrlScheme::isInstalled() const {
    auto folders = folders_.systemData;
    folders.push_back(folders_.data);
    return std::ranges::any_of(folders, [this](const std::string& folder) {
        const auto entry = files_.readFile(folder + "/applications/" + std::string{installedEntry});
        return entry && entry->find(mimeType) != std::string::npos;
    });
}

// A file that is as it should be is not written again.
FileResult<void> UrlScheme::keep(const std::string& folder, const std::string& name, const std::string& text) {
    if (const auto old = files_.readFile(folder + "/" + name); old && *old == text) return {};
    return replaceFile(files_, folder, name, text);
}

} // namespace lumaro
