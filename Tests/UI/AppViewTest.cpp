// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/AppView.h"
#include "DesignSystem/Tokens.h"
#include "Tests/Model/AppFixture.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

namespace lumaro {
namespace {

class AppViewTest : public testing::Test, protected AppFixture {
protected:
    void SetUp() override {
        goOnBoard();
        app->onNews([this](const AppNews&) { view.refresh(); });
        view.refresh();
        QObject::connect(&view, &AppView::noticed, &view, [this](const QString& text) { notices.append(text); });
        QObject::connect(&view, &AppView::faceChanged, &view, [this] { ++changes; });
    }
    void mint(const char* code, int seconds) {
        app->invitations().mintCode();
        const auto over =
            (clock.now() + std::chrono::seconds{seconds}).time_since_epoch() / std::chrono::milliseconds{1};
        http.answer(HttpResponse{.status = 201,
                                 .body = std::string{R"({"code":")"} + code + R"(","expiresAt":)" +
                                         std::to_string(over) + R"(,"slot":"b"})"});
    }

    AppView view{{}, *app, clock, sleeper};
    int changes = 0;
    QStringList notices;
};

TEST_F(AppViewTest, ChangesOnlyWhenSomethingElseIsShown) {
    app->becameActive();
    EXPECT_EQ(changes, 0);
    app->desktop().set(false);
    EXPECT_EQ(changes, 1);
}

TEST_F(AppViewTest, ACodeRunsOutMinuteByMinuteAndThenNothingWaits) {
    const auto before = sleeper.waiting();
    mint("123456", 150);
    EXPECT_EQ(view.face().codeWorks, QStringLiteral("works for 3 more minutes"));
    pass(Seconds{30});
    EXPECT_EQ(view.face().codeWorks, QStringLiteral("works for 2 more minutes"));
    pass(Seconds{60});
    EXPECT_EQ(view.face().codeWorks, QStringLiteral("works for one more minute"));
    pass(Seconds{60});
    EXPECT_EQ(view.face().codeWorks, QStringLiteral("that code timed out"));
    EXPECT_TRUE(view.face().isCodeOver);
    EXPECT_LE(sleeper.waiting(), before);
}

TEST_F(AppViewTest, ACopyOfTheBoardIsWhatIsShown) {
    relay(noteOps("hello", PartnerID::b));
    const ScratchFolder folder;
    const auto path = folder.file("our board.json");
    view.exportBoard(QUrl::fromLocalFile(QString::fromStdString(path)));
    std::ifstream file{path};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    EXPECT_NE(text.find(R"("text":"hello")"), std::string::npos) << text;
    view.exportBoard(QUrl::fromLocalFile(QStringLiteral("/nowhere/at/all.json")));
    EXPECT_EQ(notices, (QStringList{QStringLiteral("your board is in our board.json"),
                                    QStringLiteral("the board couldn't be written there")}));
}

double lightOf(QColor color) {
    const auto part = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

TEST(PaletteTest, EveryTextStandsOutFromWhatItStandsOn) {
    for (const bool isDark : {false, true}) {
        const auto all = palette(isDark);
        for (const auto& [text, paper] : std::vector<std::pair<QColor, QColor>>{{all.ink, all.room},
                                                                                {all.ink, all.surface},
                                                                                {all.ink, all.pressed},
                                                                                {all.softInk, all.surface},
                                                                                {all.softInk, all.raised},
                                                                                {all.accent, all.surface},
                                                                                {all.accent, all.raised},
                                                                                {all.onAccent, all.accent},
                                                                                {all.onAccent, all.accentPressed}}) {
            const double one = lightOf(text);
            const double other = lightOf(paper);
            EXPECT_GE((std::max(one, other) + 0.05) / (std::min(one, other) + 0.05), 4.5)
                << text.name().toStdString() << " on " << paper.name().toStdString() << (isDark ? ", dark" : "");
        }
    }
}

} // namespace
} // namespace lumaro
