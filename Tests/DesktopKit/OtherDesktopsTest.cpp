// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/DesktopKit/OtherDesktops.h"

#include "Tests/DesktopKit/OwnDisplay.h"

#include <QRasterWindow>
#include <QScreen>

namespace lumaro {
namespace {

// A file manager that draws icons, as others see it.
class FileManager final : public QRasterWindow {
public:
    explicit FileManager(bool isSeeThrough) {
        setGeometry(0, 0, 1280, 800);
        auto surface = format();
        surface.setAlphaBufferSize(isSeeThrough ? 8 : -1);
        setFormat(surface);
        create();
        OwnDisplayTest::becomeDesktopOfAnother(*this);
    }
};

class OtherDesktopsTest : public OwnDisplayTest {
protected:
    DesktopLevel levelNow() const { return others_.levelOn(*QGuiApplication::primaryScreen()); }
    static void show(QWindow& window) {
        window.show();
        waitUntil([&] { return window.isExposed() && stacking().contains(idOf(window)); });
    }

    int changes_ = 0;
    OtherDesktops others_{[this] { ++changes_; }};
};

TEST_F(OtherDesktopsTest, AProgramThatDrawsIconsIsInTheWayFromWhenItComesUntilItGoes) {
    EXPECT_EQ(levelNow(), DesktopLevel::behindIcons);
    FileManager manager{false};
    show(manager);
    waitUntil([&] { return levelNow() == DesktopLevel::iconsInTheWay; });
    EXPECT_EQ(others_.program(), "test");
    manager.hide();
    waitUntil([&] { return levelNow() == DesktopLevel::behindIcons; });
    EXPECT_EQ(others_.program(), "");
    EXPECT_EQ(changes_, 2);
}

TEST_F(OtherDesktopsTest, IconsThatWhatIsBehindThemShowsThroughHaveTheBoardBehindThem) {
    const SelectionOwner compositor{"_NET_WM_CM_S0"};
    FileManager manager{true};
    show(manager);
    waitUntil([&] { return changes_ > 0; });
    EXPECT_EQ(levelNow(), DesktopLevel::behindIcons);
    QRasterWindow board;
    board.setGeometry(0, 0, 1280, 800);
    EXPECT_EQ(placeAtDesktopLevel(board), DesktopLevel::behindIcons);
    show(board);
    keepBehindOthers(board);
    waitUntil([&] { return stacking() == QStringList({idOf(board), idOf(manager)}); });
    EXPECT_EQ(levelNow(), DesktopLevel::behindIcons) << "our own windows are in nobody's way";
}

TEST(LevelBesideTest, IconsOnAnotherScreenAreNotInTheWay) {
    using enum DesktopLevel;
    const std::vector<OtherDesktop> left{{.place = {0, 0, 1920, 1080}}};
    EXPECT_EQ(levelBeside(left, {0, 0, 1920, 1080}, behindIcons), iconsInTheWay);
    EXPECT_EQ(levelBeside(left, {1920, 0, 1280, 800}, behindIcons), behindIcons);
    EXPECT_EQ(levelBeside(left, {0, 0, 1920, 1080}, refused), refused);
}

} // namespace
} // namespace lumaro
