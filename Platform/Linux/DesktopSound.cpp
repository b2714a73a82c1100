// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/DesktopSound.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace lumaro {
namespace {

QStringList listOf(const std::vector<std::string>& texts) {
    QStringList list;
    for (const auto& text : texts) list.push_back(QString::fromStdString(text));
    return list;
}

std::vector<std::string> vectorOf(const QStringList& list) {
    std::vector<std::string> texts;
    for (const auto& text : list) texts.push_back(text.toStdString());
    return texts;
}

// The theme's name for a sound that is known by another.
QString themeName(std::string_view name) {
    if (name == "Glass") return QStringLiteral("complete");
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

QString fileOf(const QString& name, const QStringList& dataFolders) {
    for (const auto& folder : dataFolders) {
        for (const auto& extension : {QStringLiteral(".oga"), QStringLiteral(".ogg"), QStringLiteral(".wav")}) {
            const auto path = folder + QStringLiteral("/sounds/freedesktop/stereo/") + name + extension;
            if (QFileInfo{path}.isFile()) return path;
        }
    }
    return {};
}

struct Player {
    QString program;
    QStringList options; // that the file comes behind
};

} // namespace

DesktopSound::Folders DesktopSound::userFolders() {
    return {.data = vectorOf(QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)),
            .programs = vectorOf(qEnvironmentVariable("PATH").split(u':', Qt::SkipEmptyParts))};
}

void DesktopSound::play(std::string_view name) {
    const auto file = fileOf(themeName(name), listOf(folders_.data));
    if (file.isEmpty()) return;
    const auto programs = listOf(folders_.programs);
    for (const auto& player : {Player{QStringLiteral("pw-play"), {}}, Player{QStringLiteral("paplay"), {}},
                               Player{QStringLiteral("canberra-gtk-play"), {QStringLiteral("-f")}}}) {
        QProcess process;
        process.setProgram(QStandardPaths::findExecutable(player.program, programs));
        if (process.program().isEmpty()) continue;
        process.setArguments(player.options + QStringList{file});
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.startDetached();
        return;
    }
}

} // namespace lumaro
