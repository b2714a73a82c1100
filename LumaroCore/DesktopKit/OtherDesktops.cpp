// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/DesktopKit/OtherDesktops.h"

#include "LumaroCore/DesktopKit/NativeDesktop.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace lumaro {
namespace {

// A window is on the list of windows a moment before it is at its place.
constexpr std::chrono::milliseconds settling{60};

// Qt has a screen's place as the window system does, and its size in points.
QRect pixelsOf(const QScreen& screen) {
    return {screen.geometry().topLeft(), (QSizeF{screen.size()} * screen.devicePixelRatio()).toSize()};
}

} // namespace

DesktopLevel levelBeside(const std::vector<OtherDesktop>& others, const QRect& place, DesktopLevel lowest) {
    const bool isInTheWay = std::ranges::any_of(
        others, [&](const OtherDesktop& other) { return !other.isSeeThrough && other.place.intersects(place); });
    return lowest == DesktopLevel::behindIcons && isInTheWay ? DesktopLevel::iconsInTheWay : lowest;
}

class OtherDesktops::Watch final : public QAbstractNativeEventFilter {
public:
    explicit Watch(std::function<void()> changed) : changed_(std::move(changed)) {
        settled_.setSingleShot(true);
        settled_.setInterval(settling);
        QObject::connect(&settled_, &QTimer::timeout, &settled_, [this] {
            if (look()) changed_();
        });
        if (askForOtherDesktops()) QGuiApplication::instance()->installNativeEventFilter(this);
        look();
    }

    bool look() {
        const auto lowest = lowestLevel();
        auto found = otherDesktops();
        const bool isNew = lowest != lowest_ || found != others_;
        lowest_ = lowest;
        others_ = std::move(found);
        return isNew;
    }
    DesktopLevel levelOn(const QScreen& screen) const { return levelBeside(others_, pixelsOf(screen), lowest_); }
    std::string program() const {
        const auto found = std::ranges::find(others_, false, &OtherDesktop::isSeeThrough);
        return found == others_.end() ? std::string{} : found->program;
    }

    bool nativeEventFilter(const QByteArray& eventType, void* event, qintptr* /*result*/) override {
        // Not put off by what comes meanwhile: a desktop on which windows come and go all the time is looked at, too.
        if (isOfOtherDesktops(eventType, event) && !settled_.isActive()) settled_.start();
        return false;
    }

private:
    std::function<void()> changed_;
    QTimer settled_;
    DesktopLevel lowest_ = DesktopLevel::refused;
    std::vector<OtherDesktop> others_;
};

OtherDesktops::OtherDesktops(std::function<void()> changed) : watch_(std::make_unique<Watch>(std::move(changed))) {
}
OtherDesktops::~OtherDesktops() = default;

void OtherDesktops::look() {
    watch_->look();
}

DesktopLevel OtherDesktops::levelOn(const QScreen& screen) const {
    return watch_->levelOn(screen);
}

std::string OtherDesktops::program() const {
    return watch_->program();
}

} // namespace lumaro
