// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Fonts.h"
#include "DesignSystem/Furnish.h"
#include "Tests/Fakes/KeptPicture.h"

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlExtensionPlugin>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

Q_IMPORT_QML_PLUGIN(DesignSystemPlugin)

namespace lumaro {
namespace {

class GalleryPictures : public testing::TestWithParam<bool> {};

TEST_P(GalleryPictures, LookAsTheyWereKept) {
    QQuickView view;
    furnish(*view.engine());
    themeOf(*view.engine()).setMotionReduced(true);
    themeOf(*view.engine()).setDark(GetParam());
    view.setSource(QUrl{QStringLiteral("qrc:/qt/qml/DesignSystem/Gallery/Gallery.qml")});
    ASSERT_NE(view.rootObject(), nullptr);
    view.resize(static_cast<int>(view.rootObject()->implicitWidth()),
                static_cast<int>(view.rootObject()->implicitHeight()));
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    const auto name = GetParam() ? QStringLiteral("gallery/dark") : QStringLiteral("gallery/light");
    // Some of it comes in slowly.
    if (std::getenv("LUMARO_WRITE_GOLDEN") != nullptr) QTest::qWait(1000);
    std::string difference;
    static_cast<void>(QTest::qWaitFor([&] {
        difference = differenceFromKept(view.grabWindow(), view.devicePixelRatio(), name);
        return difference.empty();
    }));
    EXPECT_EQ(difference, "");
}

INSTANTIATE_TEST_SUITE_P(ByDayAndByNight, GalleryPictures, testing::Bool());

} // namespace
} // namespace lumaro

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    const QGuiApplication application{count, arguments};
    lumaro::registerFonts();
    return RUN_ALL_TESTS();
}
