// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/SettingsFile.h"

#include <QSettings>

namespace lumaro {
namespace {

QString qtString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

SettingsFile::SettingsFile(const std::string& path, Log& log)
    : file_(std::make_unique<QSettings>(QString::fromStdString(path), QSettings::IniFormat)), log_(log) {
    if (file_->status() == QSettings::FormatError) {
        log_.write(LogLevel::error, "settings", "the settings file has lines that cannot be read");
    }
}

SettingsFile::~SettingsFile() = default;

std::optional<std::string> SettingsFile::string(std::string_view key) const {
    const auto value = file_->value(qtString(key));
    return value.isValid() ? std::optional{value.toString().toStdString()} : std::nullopt;
}

std::optional<bool> SettingsFile::boolean(std::string_view key) const {
    const auto value = file_->value(qtString(key));
    return value.isValid() ? std::optional{value.toBool()} : std::nullopt;
}

void SettingsFile::setString(std::string_view key, std::string_view value) {
    file_->setValue(qtString(key), qtString(value));
    store();
}

void SettingsFile::setBoolean(std::string_view key, bool value) {
    file_->setValue(qtString(key), value);
    store();
}

void SettingsFile::remove(std::string_view key) {
    if (!file_->contains(qtString(key))) return;
    file_->remove(qtString(key));
    store();
}

void SettingsFile::store() {
    file_->sync();
    if (file_->status() != QSettings::AccessError) return;
    // It remembers an error for good. A second one shares all values, and tells how storing them went just now.
    file_ = std::make_unique<QSettings>(file_->fileName(), QSettings::IniFormat);
    if (file_->status() != QSettings::AccessError) return;
    log_.write(LogLevel::error, "settings", "the settings could not be stored");
}

} // namespace lumaro
