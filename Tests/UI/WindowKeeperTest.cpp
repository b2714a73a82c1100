// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Windows/WindowKeeper.h"

#include "Tests/DesktopKit/OwnDisplay.h"
#include "Tests/Fakes/MemoryDefaults.h"

#include <QScreen>
#include <QWindow>

namespace lumaro {
namespace {

class WindowKeeperTest : public OwnDisplayTest {
protected:
    /// A window as it is made, with its keeper.
    static std::unique_ptr<QWindow> made(MemoryDefaults& defaults, QSize usual = {420, 300}) {
        auto window = std::make_unique<QWindow>();
        window->resize(usual);
        window->setMinimumSize({200, 150});
        new WindowKeeper{*window, defaults, "boardWindow"};
        return window;
    }
    static void show(QWindow& window) {
        window.setVisible(true);
        waitUntil([&] { return window.isExposed(); });
    }

    MemoryDefaults defaults_;
};

TEST_F(WindowKeeperTest, WhatPeopleMoveIsThereTheNextTime) {
    const auto first = made(defaults_);
    EXPECT_TRUE(first->screen()->availableGeometry().contains(first->geometry()));
    show(*first);
    first->setGeometry(160, 190, 333, 222);
    waitUntil([&] { return first->geometry() == QRect(160, 190, 333, 222); });
    first->hide();
    const auto second = made(defaults_);
    EXPECT_EQ(second->geometry(), QRect(160, 190, 333, 222));
    show(*second);
    second->setWindowStates(Qt::WindowMaximized);
    waitUntil([&] { return second->width() > 1000; });
    second->hide();
    const auto third = made(defaults_);
    EXPECT_EQ(third->windowStates(), Qt::WindowMaximized);
    EXPECT_EQ(third->geometry(), QRect(160, 190, 333, 222));
}

TEST_F(WindowKeeperTest, AWindowIsWholeWhateverTheFileHolds) {
    for (const char* const text :
         {"9000x9000 -7000,-7000 windowed gone", "1x1 32000,32000 windowed screen", "90000x1 x"}) {
        defaults_.setString("boardWindow", text);
        const auto window = made(defaults_, {3000, 2000});
        EXPECT_TRUE(window->screen()->availableGeometry().contains(window->geometry())) << text;
        EXPECT_GE(window->width(), 200) << text;
    }
}

} // namespace
} // namespace lumaro
