// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/SettingsView.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardModel/Payload.h"
#include "LumaroCore/Support/EnumNames.h"

#include <QtCore/QEvent>
#include <QtCore/QLocale>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

namespace lumaro {
namespace {

constexpr std::string_view notifiesKey = "notifiesOfItems";
constexpr std::string_view notifiesOfBlocksKey = "notifiesOfBlocks";
constexpr std::string_view soundsKey = "playsSounds";
constexpr std::string_view motionKey = "reducesMotion";
constexpr std::string_view appearanceKey = "appearance";
constexpr std::string_view unitKey = "temperatureUnit";
constexpr std::string_view weatherMovesKey = "weatherMoves";
constexpr std::string_view formerAppearanceKey = "surroundings"; // read, no longer written

bool isSystemDark() {
    const auto palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

bool SettingsView::notifiesOfItems() const {
    return defaults_.boolean(notifiesKey).value_or(true);
}

bool SettingsView::notifiesOfBlocks() const {
    return defaults_.boolean(notifiesOfBlocksKey).value_or(true);
}

bool SettingsView::playsSounds() const {
    return defaults_.boolean(soundsKey).value_or(true);
}

bool SettingsView::reducesMotion() const {
    return defaults_.boolean(motionKey).value_or(false);
}

QString SettingsView::appearance() const {
    auto stored = defaults_.string(appearanceKey);
    if (!stored) stored = defaults_.string(formerAppearanceKey);
    const auto kept = qText(stored.value_or(""));
    const bool isKnown = kept == QLatin1String{"light"} || kept == QLatin1String{"dark"};
    return isKnown ? kept : QStringLiteral("follow");
}

QString SettingsView::temperatureUnit() const {
    const auto kept = fromName<TemperatureUnit>(defaults_.string(unitKey).value_or(""));
    return kept ? qText(nameOf(*kept)) : QStringLiteral("follow");
}

bool SettingsView::isFahrenheit() const {
    const auto kept = fromName<TemperatureUnit>(defaults_.string(unitKey).value_or(""));
    if (kept) return *kept == TemperatureUnit::fahrenheit;
    return QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
}

bool SettingsView::weatherMoves() const {
    return defaults_.boolean(weatherMovesKey).value_or(false);
}

void SettingsView::setOpensAtLogin(bool opens) {
    const auto done = opens ? loginItem_.enable() : loginItem_.disable();
    fault_ = done ? QString{} : Words::tr("this computer wouldn't take that down");
    Q_EMIT changed();
}

void SettingsView::setNotifiesOfItems(bool notifies) {
    keep(notifiesKey, notifies);
}

void SettingsView::setNotifiesOfBlocks(bool notifies) {
    keep(notifiesOfBlocksKey, notifies);
}

void SettingsView::setPlaysSounds(bool plays) {
    keep(soundsKey, plays);
}

void SettingsView::setReducesMotion(bool reduces) {
    keep(motionKey, reduces);
}

void SettingsView::setAppearance(const QString& appearance) {
    keep(appearanceKey, appearance);
}

void SettingsView::setTemperatureUnit(const QString& unit) {
    keep(unitKey, unit);
}

void SettingsView::setWeatherMoves(bool moves) {
    keep(weatherMovesKey, moves);
}

void SettingsView::keep(std::string_view key, const QString& value) {
    defaults_.setString(key, value.toStdString());
    fault_.clear();
    Q_EMIT changed();
}

void SettingsView::keep(std::string_view key, bool value) {
    defaults_.setBoolean(key, value);
    fault_.clear();
    Q_EMIT changed();
}

void SettingsView::dress(Theme& theme) {
    theme_ = &theme;
    connect(this, &SettingsView::changed, this, &SettingsView::tellTheme, Qt::UniqueConnection);
    qGuiApp->installEventFilter(this);
    tellTheme();
}

void SettingsView::tellTheme() {
    if (!theme_) return;
    const auto wanted = appearance();
    theme_->setDark(wanted == QLatin1String{"follow"} ? isSystemDark() : wanted == QLatin1String{"dark"});
    theme_->setMotionReduced(reducesMotion());
}

bool SettingsView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange) tellTheme();
    return QObject::eventFilter(watched, event);
}

} // namespace lumaro
