// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/ScreenLock.h"

#include "Tests/Platform/Linux/PrivateBus.h"

namespace lumaro {
namespace {

class ScreenLockTest : public BusTest {
protected:
    void say(const QString& desktop, bool isActive) const {
        auto signal = QDBusMessage::createSignal(QStringLiteral("/ScreenSaver"),
                                                 QStringLiteral("org.%1.ScreenSaver").arg(desktop),
                                                 QStringLiteral("ActiveChanged"));
        signal << isActive;
        EXPECT_TRUE(bus().send(signal));
    }
};

TEST_F(ScreenLockTest, TellsOnceOfALockHoweverManySaversSpeakOfIt) {
    std::vector<bool> told;
    auto lock = std::make_unique<ScreenLock>([&](bool isLocked) { told.push_back(isLocked); }, bus());
    for (const bool isActive : {true, false}) {
        say(QStringLiteral("freedesktop"), isActive);
        say(QStringLiteral("gnome"), isActive);
    }
    say(QStringLiteral("mate"), true);
    waitUntil([&] { return told.size() >= 3; });
    EXPECT_EQ(told, (std::vector{true, false, true}));
    lock.reset();
    say(QStringLiteral("mate"), false);
    settle();
    EXPECT_EQ(told.size(), 3U);
}

} // namespace
} // namespace lumaro
