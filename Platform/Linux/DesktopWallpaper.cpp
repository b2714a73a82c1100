// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/DesktopWallpaper.h"

#include "Platform/Linux/SettingsWallpaper.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace lumaro {
namespace {

constexpr int patience = 3000; // ms
const QString xfconfName = QStringLiteral("org.xfce.Xfconf");
const QString xfceChannel = QStringLiteral("xfce4-desktop");
const QString pcmanfmProgram = QStringLiteral("pcmanfm");
constexpr qint64 largestConfiguration = qint64{64} * 1024;

QDBusMessage toXfconf(const QString& method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(xfconfName, QStringLiteral("/org/xfce/Xfconf"), xfconfName, method);
    call.setArguments(arguments);
    return call;
}

// "s:/a/picture.png", "i:5"; of other kinds are no wallpapers.
std::optional<std::string> textOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) return "s:" + value.toString().toStdString();
    if (value.typeId() == QMetaType::Int) return "i:" + std::to_string(value.toInt());
    return std::nullopt;
}

QVariant valueOf(const std::string& text) {
    const auto rest = QString::fromStdString(text).mid(2);
    return text.starts_with("i:") ? QVariant{rest.toInt()} : QVariant{rest};
}

std::string faultOf(const QDBusMessage& answer) {
    return answer.errorName().toStdString() + ": " + answer.errorMessage().toStdString();
}

/// What pcmanfm wrote last of its desktop, whatever profile it runs with.
QString pcmanfmFile() {
    const QDir folder{QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                      QStringLiteral("/pcmanfm")};
    QFileInfo newest;
    for (const auto& profile : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QFileInfo file{folder.filePath(profile + QStringLiteral("/desktop-items-0.conf"))};
        if (file.exists() && (!newest.exists() || file.lastModified() > newest.lastModified())) newest = file;
    }
    return newest.exists() ? newest.filePath() : QString{};
}

std::expected<WallpaperSettings, std::string> readPcmanfm() {
    WallpaperSettings found{{"wallpaper", std::nullopt}, {"wallpaper_mode", std::nullopt}};
    const auto name = pcmanfmFile();
    if (name.isEmpty()) return found;
    QFile file{name};
    if (!file.open(QIODevice::ReadOnly)) return std::unexpected(file.errorString().toStdString());
    // One "name=value" a line, of the one group that it has.
    for (const auto& line : file.read(largestConfiguration).split('\n')) {
        for (auto& [key, value] : found) {
            const auto start = QByteArray::fromStdString(key) + '=';
            if (line.startsWith(start)) value = line.mid(start.size()).trimmed().toStdString();
        }
    }
    // Of a plain colour the picture of before is still named.
    if (found["wallpaper_mode"] == "color") found["wallpaper"] = std::nullopt;
    return found;
}

std::expected<void, std::string> writePcmanfm(const WallpaperSettings& settings) {
    const auto textOfKey = [&](const char* key) {
        const auto found = settings.find(key);
        return QString::fromStdString(found == settings.end() ? std::string{} : found->second.value_or(""));
    };
    const auto picture = textOfKey("wallpaper");
    auto mode = textOfKey("wallpaper_mode");
    if (mode.isEmpty()) mode = picture.isEmpty() ? QStringLiteral("color") : QStringLiteral("crop");
    QStringList arguments;
    if (!picture.isEmpty()) arguments.append(QStringLiteral("--set-wallpaper=") + picture);
    arguments.append(QStringLiteral("--wallpaper-mode=") + mode);
    QProcess program;
    program.start(pcmanfmProgram, arguments);
    if (!program.waitForFinished(patience)) {
        program.kill();
        program.waitForFinished();
        return std::unexpected("pcmanfm does not answer");
    }
    if (program.exitCode() != 0) return std::unexpected("pcmanfm would not");
    return {};
}

} // namespace

bool DesktopWallpaper::isThere(WallpaperDesk desk) {
    switch (desk) {
    case WallpaperDesk::gnome:
    case WallpaperDesk::cinnamon:
    case WallpaperDesk::mate: return hasSettings(desk);
    case WallpaperDesk::xfce: return bus_.isConnected() && bus_.interface()->isServiceRegistered(xfconfName).value();
    case WallpaperDesk::pcmanfm: return !QStandardPaths::findExecutable(pcmanfmProgram).isEmpty();
    }
    return false;
}

std::expected<WallpaperSettings, std::string> DesktopWallpaper::read(WallpaperDesk desk) {
    if (desk == WallpaperDesk::xfce) return readXfconf();
    return desk == WallpaperDesk::pcmanfm ? readPcmanfm() : readSettings(desk);
}

std::expected<void, std::string> DesktopWallpaper::write(WallpaperDesk desk, const WallpaperSettings& settings) {
    if (desk == WallpaperDesk::xfce) return writeXfconf(settings);
    return desk == WallpaperDesk::pcmanfm ? writePcmanfm(settings) : writeSettings(desk, settings);
}

std::expected<WallpaperSettings, std::string> DesktopWallpaper::readXfconf() const {
    const auto answer =
        bus_.call(toXfconf(QStringLiteral("GetAllProperties"), {xfceChannel, QStringLiteral("/backdrop")}),
                  QDBus::Block, patience);
    // A channel that nobody has set anything in is no fault.
    if (answer.type() == QDBusMessage::ErrorMessage) {
        if (answer.errorName().endsWith(QLatin1String{"PropertyNotFound"})) return WallpaperSettings{};
        return std::unexpected(faultOf(answer));
    }
    if (answer.signature() != QLatin1String{"a{sv}"}) return std::unexpected("xfconf answers something else");
    WallpaperSettings found;
    const auto properties = qdbus_cast<QVariantMap>(answer.arguments().constFirst());
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        const auto& name = property.key();
        const bool isWanted =
            name.endsWith(QLatin1String{"/last-image"}) || name.endsWith(QLatin1String{"/image-style"});
        if (!isWanted || found.size() == mostWallpaperSettings) continue;
        if (auto text = textOf(property.value())) found[name.toStdString()] = std::move(*text);
    }
    return found;
}

std::expected<void, std::string> DesktopWallpaper::writeXfconf(const WallpaperSettings& settings) const {
    for (const auto& [key, text] : settings) {
        const auto name = QString::fromStdString(key);
        const auto call = text ? toXfconf(QStringLiteral("SetProperty"),
                                          {xfceChannel, name, QVariant::fromValue(QDBusVariant{valueOf(*text)})})
                               : toXfconf(QStringLiteral("ResetProperty"), {xfceChannel, name, false});
        const auto answer = bus_.call(call, QDBus::Block, patience);
        if (answer.type() == QDBusMessage::ErrorMessage) return std::unexpected(faultOf(answer));
    }
    return {};
}

} // namespace lumaro
