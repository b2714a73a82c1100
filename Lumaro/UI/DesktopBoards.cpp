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

constexpr std::string_view leftFreeKey = "screensLeftFree";
// Held the screens that were chosen; one that was new was not among them.
constexpr std::string_view formerKey = "desktopScreens";
// More than anybody plugs in; the names of those that were left free longest ago go first.
constexpr qsizetype mostLeftFree = 64;
// In no name of a screen that we know.
const QChar separator = u',';

bool isHung(DesktopLevel level) {
    return level == DesktopLevel::behindIcons || level == DesktopLevel::bottomMost;
}

} // namespace

struct DesktopBoards::Board {
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<Coverage> coverage;
};

DesktopBoards::DesktopBoards(UserDefaults& defaults, MakeWindow make)
    : defaults_(defaults), make_(std::move(make)), others_([this] {
          hang();
          Q_EMIT changed();
      }) {
    migrate();
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this] {
        hang();
        Q_EMIT changed();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](QScreen* screen) {
        boards_.erase(screen);
        tellLevel();
        Q_EMIT changed();
    });
}

DesktopBoards::~DesktopBoards() = default;

void DesktopBoards::setEnabled(bool enabled) {
    isEnabled_ = enabled;
    hang();
}

DesktopLevel DesktopBoards::reach() const {
    const auto free = leftFree();
    auto worst = DesktopLevel::behindIcons;
    for (const auto* screen : QGuiApplication::screens()) {
        if (!free.contains(screen->name())) worst = std::max(worst, others_.levelOn(*screen));
    }
    return worst;
}

QString DesktopBoards::iconProgram() const {
    return qText(others_.program());
}

std::vector<DesktopBoards::Choice> DesktopBoards::choices() const {
    const auto free = leftFree();
    std::vector<Choice> choices;
    for (const auto* screen : QGuiApplication::screens()) {
        choices.push_back({screen->name(), !free.contains(screen->name())});
    }
    return choices;
}

std::vector<WallpaperPainter::Place> DesktopBoards::places() const {
    const auto free = leftFree();
    std::vector<WallpaperPainter::Place> places;
    for (auto* screen : QGuiApplication::screens()) places.push_back({screen, !free.contains(screen->name())});
    return places;
}

void DesktopBoards::choose(const QString& screen, bool isChosen) {
    auto free = leftFree();
    free.removeAll(screen);
    if (!isChosen) free.append(screen);
    leaveFree(std::move(free));
    hang();
    Q_EMIT changed();
}

void DesktopBoards::setScreenLocked(bool isLocked) {
    isLocked_ = isLocked;
    for (auto& [screen, board] : boards_) pauseAsNeeded(*board);
}

QStringList DesktopBoards::leftFree() const {
    return qText(defaults_.string(leftFreeKey).value_or("")).split(separator, Qt::SkipEmptyParts);
}

void DesktopBoards::leaveFree(QStringList screens) {
    screens = screens.mid(std::max(screens.size() - mostLeftFree, qsizetype{0}));
    if (screens.isEmpty()) {
        defaults_.remove(leftFreeKey);
    } else {
        defaults_.setString(leftFreeKey, screens.join(separator).toStdString());
    }
}

void DesktopBoards::migrate() {
    const auto former = defaults_.string(formerKey);
    if (!former) return;
    const auto chosen = qText(*former).split(separator, Qt::SkipEmptyParts);
    auto free = leftFree();
    for (const auto* screen : QGuiApplication::screens()) {
        if (!chosen.contains(screen->name()) && !free.contains(screen->name())) free.append(screen->name());
    }
    leaveFree(std::move(free));
    defaults_.remove(formerKey);
}

void DesktopBoards::hang() {
    others_.look();
    const auto free = leftFree();
    for (auto* screen : QGuiApplication::screens()) {
        const bool isWanted = isEnabled_ && !free.contains(screen->name());
        if (!isWanted || !isHung(others_.levelOn(*screen))) {
            boards_.erase(screen);
        } else if (!boards_.contains(screen)) {
            hangOn(*screen);
        }
    }
    for (auto& [screen, board] : boards_) keepBehindOthers(*board->window);
    tellLevel();
}

void DesktopBoards::tellLevel() {
    const auto screens = QGuiApplication::screens();
    const auto free = leftFree();
    const bool isAnyWanted =
        isEnabled_ && std::ranges::any_of(screens, [&](const auto* screen) { return !free.contains(screen->name()); });
    const auto level = isAnyWanted ? std::optional{reach()} : std::nullopt;
    if (std::exchange(level_, level) != level) Q_EMIT changed();
}

void DesktopBoards::hangOn(QScreen& screen) {
    auto window = make_(screen);
    if (!window) return;
    window->setScreen(&screen);
    window->setGeometry(screen.geometry());
    if (!isHung(placeAtDesktopLevel(*window))) return;
    setClickThrough(*window, true);
    auto& board = *boards_.emplace(&screen, std::make_unique<Board>()).first->second;
    board.window = std::move(window);
    board.coverage = std::make_unique<Coverage>(*board.window, [this, &board](bool) { pauseAsNeeded(board); });
    // The window is the context, so that the connection ends with it.
    connect(&screen, &QScreen::geometryChanged, board.window.get(),
            [window = board.window.get()](const QRect& place) { window->setGeometry(place); });
    pauseAsNeeded(board);
    board.window->show();
}

void DesktopBoards::pauseAsNeeded(Board& board) const {
    board.window->setProperty("isPaused", isLocked_ || board.coverage->isCovered());
}

} // namespace lumaro
