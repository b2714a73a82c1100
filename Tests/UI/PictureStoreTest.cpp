// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/PictureStore.h"

#include "Platform/Posix/PosixFileSystem.h"
#include "Tests/Fakes/ManualBackground.h"
#include "Tests/Fakes/ManualSleeper.h"

#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

namespace lumaro {
namespace {

class PictureStoreTest : public testing::Test {
protected:
    PictureStoreTest() {
        QImage photo{400, 200, QImage::Format_RGB32};
        photo.fill(Qt::red);
        QByteArray png;
        QBuffer buffer{&png};
        EXPECT_TRUE(photo.save(&buffer, "PNG"));
        EXPECT_TRUE(cache.put(id, std::string_view{png.data(), static_cast<std::size_t>(png.size())}));
        store.onArrival([this] { ++arrivals; });
    }

    ItemPicture shown(double pixels) {
        static_cast<void>(store.picture(id, {pixels, pixels}));
        background.runAll();
        return store.picture(id, {pixels, pixels});
    }

    const UUID id = *UUID::parse("0b0e7e9e-0000-4000-8000-000000000001");
    QTemporaryDir folder;
    PosixFileSystem files;
    MediaCache cache{files, folder.path().toStdString()};
    ManualBackground background;
    ManualSleeper sleeper;
    PictureStore store{{cache, background, sleeper}};
    int arrivals = 0;
};

TEST_F(PictureStoreTest, PicturesComeAsLargeAsTheyAreWantedAndNoLarger) {
    EXPECT_TRUE(store.picture(id, {200, 100}).isNull());
    EXPECT_EQ(shown(200).pixels().size(), QSize(224, 112));
    EXPECT_EQ(shown(150).pixels().size(), QSize(224, 112));
    EXPECT_EQ(shown(5000).pixels().size(), QSize(400, 200));
    EXPECT_EQ(arrivals, 2);
}

TEST_F(PictureStoreTest, APaintedPictureSleepsWithoutLookingOtherwiseAndComesBackWhenWanted) {
    const auto painted = shown(200);
    sleeper.advance(Seconds{11});
    EXPECT_TRUE(painted.isAsleep());
    EXPECT_EQ(store.picture(id, {200, 100}), painted);
    painted.want();
    painted.want();
    EXPECT_EQ(background.waiting(), 1U);
    background.runAll();
    EXPECT_NE(store.picture(id, {200, 100}), painted);
    EXPECT_FALSE(store.picture(id, {200, 100}).isAsleep());
}

TEST_F(PictureStoreTest, WhoStillHoldsAPictureThatHangsNoMoreWakesNothing) {
    const auto painted = shown(200);
    sleeper.advance(Seconds{11});
    store.keepOnly({});
    painted.want();
    EXPECT_EQ(background.waiting(), 0U);
}

} // namespace
} // namespace lumaro
