// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Windows/WindowKeeper.h"

#include "Lumaro/UI/Text.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

#include <chrono>
#include <utility>

namespace lumaro {
namespace {

constexpr std::chrono::milliseconds rest{500}; // after the last move

bool isPlaceKnown() {
    return !QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

bool isMaximized(const QWindow& window) {
    return (window.windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0;
}

std::vector<ScreenRoom> screensThere() {
    std::vector<ScreenRoom> screens;
    for (const auto* const screen : QGuiApplication::screens()) {
        screens.push_back({screen->name(), screen->availableGeometry()});
    }
    return screens;
}

} // namespace

WindowKeeper::WindowKeeper(QWindow& window, UserDefaults& defaults, std::string key)
    : QObject(&window), window_(window), defaults_(defaults), key_(std::move(key)),
      sizes_{window.size(), window.minimumSize()},
      kept_(WindowPlace::parse(qText(defaults.string(key_).value_or("")))) {
    rested_.setSingleShot(true);
    rested_.setInterval(rest);
    place(kept_);
    connect(&rested_, &QTimer::timeout, this, &WindowKeeper::note);
    const auto wait = [this] { rested_.start(); };
    connect(&window, &QWindow::xChanged, this, wait);
    connect(&window, &QWindow::yChanged, this, wait);
    connect(&window, &QWindow::widthChanged, this, wait);
    connect(&window, &QWindow::heightChanged, this, wait);
    connect(&window, &QWindow::windowStateChanged, this, wait);
    connect(&window, &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible) note();
    });
    for (auto* const screen : QGuiApplication::screens()) listenTo(*screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) { listenTo(*screen); });
    // Qt moves the windows of a screen that goes after it has said so.
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &WindowKeeper::bringBack, Qt::QueuedConnection);
}

void WindowKeeper::show() {
    window_.setWindowStates(window_.windowStates() & ~Qt::WindowMinimized);
    window_.setVisible(true);
    window_.raise();
    window_.requestActivate();
}

// NOLINTNEXTLINE(readability-make-member-function-const): what is connected changes this
void WindowKeeper::listenTo(const QScreen& screen) {
    connect(&screen, &QScreen::availableGeometryChanged, this, &WindowKeeper::bringBack, Qt::QueuedConnection);
}

void WindowKeeper::place(const std::optional<WindowPlace>& remembered) {
    const auto screens = screensThere();
    const auto there = placeWindow(remembered, screens, sizes_);
    window_.setMinimumSize(there.least);
    if (isPlaceKnown() && !screens.empty()) {
        window_.setGeometry(there.rect);
    } else {
        window_.resize(there.rect.size());
    }
    if (there.isMaximized) window_.setWindowStates(Qt::WindowMaximized);
}

void WindowKeeper::bringBack() {
    if (!window_.isVisible() || isMaximized(window_)) return;
    const auto* const screen = window_.screen();
    if (screen != nullptr && !screen->availableGeometry().contains(window_.geometry())) place(current());
}

void WindowKeeper::note() {
    rested_.stop();
    auto now = current();
    if (now.size.isEmpty()) return;
    if (now.isMaximized || (window_.windowStates() & Qt::WindowMinimized) != 0) {
        // It goes back to what it was before.
        now.size = kept_ ? kept_->size : sizes_.usual;
        now.at = kept_ ? kept_->at : std::nullopt;
    }
    if (kept_ == now) return;
    kept_ = now;
    defaults_.setString(key_, now.text().toStdString());
}

WindowPlace WindowKeeper::current() const {
    const auto* const screen = window_.screen();
    WindowPlace place{.size = window_.size(), .at = {}, .isMaximized = isMaximized(window_), .screen = {}};
    if (screen == nullptr) return place;
    place.screen = screen->name();
    if (isPlaceKnown()) place.at = window_.position() - screen->availableGeometry().topLeft();
    return place;
}

} // namespace lumaro
