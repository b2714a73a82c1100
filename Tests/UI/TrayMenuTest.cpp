// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/TrayMenu.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace lumaro {
namespace {

class TrayMenuTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static int count = 3;
        static char words[3][10] = {"test", "-platform", "offscreen"};
        static char* arguments[] = {words[0], words[1], words[2], nullptr};
        static const QApplication application{count, arguments};
    }
    static QAction& entry(const char* text) {
        for (auto* const window : QApplication::topLevelWidgets()) {
            for (auto* const action : window->actions()) {
                if (action->text() == QLatin1String{text}) return *action;
            }
        }
        throw std::runtime_error{std::string{"there is no "} + text};
    }
    std::function<void()> ask(const char* verb) {
        return [this, verb] { asked.emplace_back(verb); };
    }

    void show() { tray.show(trayState(appFace(state, {}, false))); }

    std::vector<std::string> asked;
    TrayMenu tray{{.quickNote = ask("quick note"),
                   .openBoard = ask("open the board"),
                   .showOnDesktop = [this](bool shows) { asked.emplace_back(shows ? "show" : "hide"); },
                   .settings = ask("settings"),
                   .quit = ask("quit")}};
    AppState state;
};

TEST_F(TrayMenuTest, EachEntryAsksForWhatItSays) {
    state.token.emplace();
    show();
    const std::vector<std::string> all{"quick note", "open the board", "settings", "quit"};
    for (const auto& text : all) entry(text.c_str()).trigger();
    EXPECT_EQ(asked, all);
}

TEST_F(TrayMenuTest, ShowingHowThingsStandAsksForNothing) {
    state.isRestoring = false;
    for (const bool shows : {false, true, false}) {
        state.showsBoardOnDesktop = shows;
        show();
        EXPECT_EQ(entry("show on desktop").isChecked(), shows);
    }
    EXPECT_FALSE(entry("no board yet").isEnabled());
    entry("quick note").trigger(); // there is nothing to put it on
    EXPECT_TRUE(asked.empty());
    entry("show on desktop").trigger();
    EXPECT_EQ(asked, std::vector<std::string>{"show"});
}

} // namespace
} // namespace lumaro
