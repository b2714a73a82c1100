// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/DesktopKit/DesktopLevel.h"

#include "LumaroCore/DesktopKit/NativeDesktop.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>

#include <utility>

namespace lumaro {

DesktopLevel placeAtDesktopLevel(QWindow& window) {
    window.setFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnBottomHint | Qt::WindowDoesNotAcceptFocus);
    prepareDesktop(window);
    window.create();
    if (becomeDesktop(window)) return DesktopLevel::behindIcons;
    return lowestLevel() == DesktopLevel::bottomMost ? DesktopLevel::bottomMost : DesktopLevel::refused;
}

void keepBehindOthers(QWindow& window) {
    lowerDesktop(window);
}

void setClickThrough(QWindow& window, bool isClickThrough) {
    if (!letClicksThrough(window, isClickThrough)) window.setFlag(Qt::WindowTransparentForInput, isClickThrough);
}

class Coverage::Watch final : public QAbstractNativeEventFilter {
public:
    Watch(QWindow& window, std::function<void(bool)> changed) : window_(window), changed_(std::move(changed)) {
        if (askForVisibility(window)) QGuiApplication::instance()->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray& eventType, void* event, qintptr* /*result*/) override {
        const auto heard = coverageIn(eventType, event, window_.winId());
        if (heard && std::exchange(isCovered_, *heard) != *heard) changed_(*heard);
        return false;
    }
    bool isCovered() const { return isCovered_; }

private:
    QWindow& window_;
    std::function<void(bool)> changed_;
    bool isCovered_ = false;
};

Coverage::Coverage(QWindow& window, std::function<void(bool isCovered)> changed)
    : watch_(std::make_unique<Watch>(window, std::move(changed))) {
}
Coverage::~Coverage() = default;

bool Coverage::isCovered() const {
    return watch_->isCovered();
}

} // namespace lumaro
