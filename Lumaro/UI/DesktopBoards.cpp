// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/DesktopBoards.h"

#include "Lumaro/UI/Text.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>
#include <string_view>
#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view screensKey = "desktopScreens";
// In no name of a screen that we know.
const QChar separator = u',';

} // namespace

struct DesktopBoards::Board {
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<Coverage> coverage;
};

DesktopBoards::DesktopBoards(UserDefaults& defaults, MakeWindow make) : defaults_(defaults), make_(std::move(make)) {
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this] {
        hang();
        Q_EMIT changed();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](QScreen* screen) {
        take(screen);
        Q_EMIT changed();
    });
}

DesktopBoards::~DesktopBoards() = default;

void DesktopBoards::setEnabled(bool enabled) {
    isEnabled_ = enabled;
    hang();
}

std::vector<DesktopBoards::Choice> DesktopBoards::choices() const {
    const auto names = chosen();
    std::vector<Choice> choices;
    for (const auto* screen : QGuiApplication::screens()) {
        choices.push_back({screen->name(), !names || names->contains(screen->name())});
    }
    return choices;
}

void DesktopBoards::choose(const QString& screen, bool isChosen) {
    QStringList names = chosen().value_or(QStringList{});
    // Those that are not plugged in stay as they were chosen.
    for (const auto& choice : choices()) {
        names.removeAll(choice.screen);
        if (choice.screen == screen ? isChosen : choice.isChosen) names.append(choice.screen);
    }
    defaults_.setString(screensKey, names.join(separator).toStdString());
    if (std::ranges::all_of(choices(), &Choice::isChosen)) defaults_.remove(screensKey);
    hang();
    Q_EMIT changed();
}

void DesktopBoards::setScreenLocked(bool isLocked) {
    isLocked_ = isLocked;
    for (auto& [screen, board] : boards_) pauseAsNeeded(*board);
}

std::optional<QStringList> DesktopBoards::chosen() const {
    const auto names = defaults_.string(screensKey);
    if (!names) return std::nullopt;
    return qText(*names).split(separator, Qt::SkipEmptyParts);
}

void DesktopBoards::hang() {
    const auto names = chosen();
    for (auto* screen : QGuiApplication::screens()) {
        const bool isWanted = isEnabled_ && (!names || names->contains(screen->name()));
        if (!isWanted) {
            take(screen);
        } else if (!boards_.contains(screen)) {
            hangOn(*screen);
        }
    }
}

void DesktopBoards::hangOn(QScreen& screen) {
    auto window = make_(screen);
    if (!window) return;
    window->setScreen(&screen);
    window->setGeometry(screen.geometry());
    const auto level = placeAtDesktopLevel(*window);
    setClickThrough(*window, true);
    auto& board = *boards_.emplace(&screen, std::make_unique<Board>()).first->second;
    board.window = std::move(window);
    board.coverage = std::make_unique<Coverage>(*board.window, [this, &board](bool) { pauseAsNeeded(board); });
    // The window is the context: what a screen says of itself is heard as long as a board hangs there.
    connect(&screen, &QScreen::geometryChanged, board.window.get(),
            [window = board.window.get()](const QRect& place) { window->setGeometry(place); });
    pauseAsNeeded(board);
    board.window->show();
    if (std::exchange(level_, level) != level) Q_EMIT changed();
}

void DesktopBoards::take(QScreen* screen) {
    if (boards_.erase(screen) == 0 || !boards_.empty()) return;
    level_ = std::nullopt;
    Q_EMIT changed();
}

void DesktopBoards::pauseAsNeeded(Board& board) const {
    board.window->setProperty("isPaused", isLocked_ || board.coverage->isCovered());
}

} // namespace lumaro
