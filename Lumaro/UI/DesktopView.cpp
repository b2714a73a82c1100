// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/DesktopView.h"

#include "Lumaro/UI/DesktopWords.h"
#include "Lumaro/UI/Text.h"

#include <string_view>
#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view pictureKey = "boardAsWallpaper";
constexpr std::string_view overOwnKey = "boardOverOwnWallpaper";
// Until they ask for it again.
constexpr std::string_view madeWayKey = "boardMadeWay";
constexpr std::string_view toldKey = "toldOfDesktop";

} // namespace

DesktopView::DesktopView(Setup setup, Ports ports)
    : setup_(std::move(setup)), ports_(ports), wallpaper_(setup_.folder, ports.wallpaper, [this] {
          if (wallpaper_.state() == BoardWallpaper::State::madeWay) ports_.defaults.setBoolean(madeWayKey, true);
          Q_EMIT changed();
      }) {
    connect(&ports_.boards, &DesktopBoards::changed, this, [this] {
        // With a program that draws the desktop its wallpaper comes and goes, too.
        hang();
        wallpaper_.boardChanged();
    });
}

std::optional<WallpaperDesk> DesktopView::desk() const {
    const auto desk = wallpaperDeskOf(setup_.session, ports_.boards.iconProgram().toStdString());
    return desk && ports_.wallpaper.door.isThere(*desk) ? desk : std::nullopt;
}

void DesktopView::setEnabled(bool enabled) {
    isEnabled_ = enabled;
    hang();
}

void DesktopView::hang() {
    const auto desk = isEnabled_ && isPictureWished() ? this->desk() : std::nullopt;
    // Neither does a window cover the wallpaper that somebody chose.
    ports_.boards.setEnabled(isEnabled_ && !desk && !hasMadeWay());
    if (desk) {
        wallpaper_.hang(*desk, isOverOwn());
    } else if (wallpaper_.state() != BoardWallpaper::State::off || !std::exchange(hasLookedBack_, true)) {
        wallpaper_.putBack();
    }
    Q_EMIT changed();
}

QString DesktopView::words() const {
    if (isPicture()) return hangingAsPictureWords();
    if (hasMadeWay()) return lumaro::pictureWords(BoardWallpaper::State::madeWay, DesktopLevel::behindIcons);
    return hangingWords(ports_.boards.reach(), ports_.boards.iconProgram(), isPictureOffered());
}

bool DesktopView::isPicture() const {
    return isPictureWished() && isPictureOffered();
}

bool DesktopView::isPictureWished() const {
    return ports_.defaults.boolean(pictureKey).value_or(false) && !hasMadeWay();
}

bool DesktopView::hasMadeWay() const {
    return ports_.defaults.boolean(madeWayKey).value_or(false);
}

void DesktopView::setPicture(bool isPicture) {
    ports_.defaults.remove(madeWayKey);
    ports_.defaults.setBoolean(pictureKey, isPicture);
    hang();
}

QString DesktopView::pictureWords() const {
    const auto state = hasMadeWay() ? BoardWallpaper::State::madeWay : wallpaper_.state();
    return lumaro::pictureWords(state, ports_.boards.reach());
}

bool DesktopView::isOverOwn() const {
    return ports_.defaults.boolean(overOwnKey).value_or(false);
}

void DesktopView::setOverOwn(bool isOverOwn) {
    ports_.defaults.setBoolean(overOwnKey, isOverOwn);
    hang();
}

bool DesktopView::isToBeTold() const {
    return !ports_.defaults.boolean(toldKey).value_or(false);
}

void DesktopView::beTold() {
    ports_.defaults.setBoolean(toldKey, true);
    Q_EMIT changed();
}

void DesktopView::setScreenLocked(bool isLocked) {
    ports_.boards.setScreenLocked(isLocked);
    wallpaper_.setAsleep(isLocked);
}

} // namespace lumaro
