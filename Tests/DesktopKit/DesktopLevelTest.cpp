// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/DesktopKit/DesktopLevel.h"

#include "Tests/DesktopKit/OwnDisplay.h"

#include <QRasterWindow>

namespace lumaro {
namespace {

class CountingWindow final : public QRasterWindow {
public:
    explicit CountingWindow(QRect place) { setGeometry(place); }
    int clicks = 0;

private:
    void mousePressEvent(QMouseEvent* /*event*/) override { ++clicks; }
};

class DesktopLevelTest : public OwnDisplayTest {
protected:
    void showBoard() {
        EXPECT_EQ(placeAtDesktopLevel(board_), DesktopLevel::behindIcons);
        show(board_);
    }
    static void show(QWindow& window) {
        window.show();
        waitUntil([&] { return window.isExposed() && stacking().contains(idOf(window)); });
    }

    // The window manager takes its time to hear of a window's shape.
    static void clickUntilHeard(const CountingWindow& window) {
        const int before = window.clicks;
        waitUntil([&] {
            if (window.clicks == before) click(50, 50);
            return window.clicks > before;
        });
    }

    CountingWindow board_{{0, 0, 1280, 800}};
};

TEST_F(DesktopLevelTest, TheBoardHangsBelowAllWindowsOnEveryWorkspaceAndIsOnNoList) {
    CountingWindow earlier{{900, 500, 200, 100}};
    show(earlier);
    showBoard();
    EXPECT_TRUE(property(QStringLiteral("_NET_WM_WINDOW_TYPE"), board_).endsWith(QStringLiteral("TYPE_DESKTOP")));
    const auto states = property(QStringLiteral("_NET_WM_STATE"), board_);
    for (const auto& state : {QStringLiteral("BELOW"), QStringLiteral("SKIP_TASKBAR"), QStringLiteral("SKIP_PAGER")}) {
        EXPECT_TRUE(states.contains(QStringLiteral("_NET_WM_STATE_") + state)) << states.toStdString();
    }
    EXPECT_TRUE(property(QStringLiteral("_NET_WM_DESKTOP"), board_).endsWith(QStringLiteral("4294967295")));
    said(QStringLiteral("xdotool"), {QStringLiteral("windowraise"), idOf(board_)});
    clickUntilHeard(board_);
    EXPECT_EQ(stacking(), (QStringList{idOf(board_), idOf(earlier)}));
    EXPECT_EQ(board_.geometry(), QRect(0, 0, 1280, 800));
}

TEST_F(DesktopLevelTest, ClicksFallThroughAsLongAsTheyAreLet) {
    CountingWindow behind{{0, 0, 400, 400}};
    placeAtDesktopLevel(behind);
    show(behind);
    showBoard();
    ASSERT_EQ(stacking(), (QStringList{idOf(behind), idOf(board_)}));
    clickUntilHeard(board_);
    setClickThrough(board_, true);
    clickUntilHeard(behind);
    setClickThrough(board_, false);
    // A click raises what it meets, within its layer.
    board_.raise();
    clickUntilHeard(board_);
    EXPECT_TRUE(property(QStringLiteral("_NET_WM_WINDOW_TYPE"), board_).endsWith(QStringLiteral("TYPE_DESKTOP")));
}

TEST_F(DesktopLevelTest, ABoardBehindAWindowAsLargeAsTheScreenKnowsIt) {
    showBoard();
    std::vector<bool> told;
    const Coverage coverage{board_, [&](bool isCovered) { told.push_back(isCovered); }};
    CountingWindow large{{0, 0, 1280, 800}};
    large.setFlag(Qt::FramelessWindowHint);
    show(large);
    waitUntil([&] { return coverage.isCovered(); });
    large.hide();
    waitUntil([&] { return !coverage.isCovered(); });
    EXPECT_EQ(told, (std::vector{true, false}));
}

} // namespace
} // namespace lumaro
