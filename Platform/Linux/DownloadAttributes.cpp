// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/DownloadAttributes.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <sys/xattr.h>

#include <algorithm>
#include <optional>

namespace lumaro {
namespace {

// A folder with more in it is looked through as far as this.
constexpr int maxFilesInFolder = 20'000;

std::optional<std::string> originOf(const QString& path) {
    std::string value(DownloadOrigin::maxOriginLength, '\0');
    const auto size =
        ::getxattr(QFile::encodeName(path).constData(), "user.xdg.origin.url", value.data(), value.size());
    if (size <= 0) return std::nullopt;
    value.resize(static_cast<std::size_t>(size));
    return value;
}

// The program's packages and archives, the newest first.
QFileInfoList downloadsIn(const std::string& folder) {
    QFileInfoList found;
    QDirIterator files{QString::fromStdString(folder), QDir::Files | QDir::NoSymLinks};
    for (int seen = 0; seen < maxFilesInFolder && files.hasNext(); ++seen) {
        files.next();
        if (files.fileName().startsWith(QLatin1String{"lumaro"}, Qt::CaseInsensitive))
            found.push_back(files.fileInfo());
    }
    std::ranges::sort(found, std::greater{}, [](const QFileInfo& file) { return file.lastModified(); });
    return found;
}

} // namespace

std::string DownloadAttributes::userFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation).toStdString();
}

std::vector<std::string> DownloadAttributes::origins() {
    std::vector<std::string> origins;
    const auto add = [&](const QString& path) {
        auto origin = originOf(path);
        if (origin && origins.size() < maxOrigins && std::ranges::find(origins, *origin) == origins.end()) {
            origins.push_back(std::move(*origin));
        }
    };
    add(QString::fromStdString(places_.program));
    for (const auto& file : downloadsIn(places_.folder)) add(file.filePath());
    return origins;
}

} // namespace lumaro
