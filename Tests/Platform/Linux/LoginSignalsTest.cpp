// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/LoginSignals.h"

#include "Tests/Platform/Linux/PrivateBus.h"

namespace lumaro {
namespace {

class LoginSignalsTest : public BusTest, public SystemListener {
protected:
    const QString login_ = QStringLiteral("org.freedesktop.login1");
    const QString network_ = QStringLiteral("org.freedesktop.NetworkManager");

    void wokeFromSleep() override { ++wakes_; }
    void networkChanged() override { ++changes_; }

    void prepareForSleep(bool isAboutTo) const {
        call(login_, QStringLiteral("/org/freedesktop/login1"), QStringLiteral("org.freedesktop.DBus.Mock"),
             QStringLiteral("EmitSignal"),
             {QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), QStringLiteral("b"),
              QVariantList{isAboutTo}});
    }
    void callNetwork(const QString& method, const QVariantList& arguments) const {
        call(network_, QStringLiteral("/org/freedesktop/NetworkManager"), QStringLiteral("org.freedesktop.DBus.Mock"),
             method, arguments);
    }
    void setState(uint state) const { callNetwork(QStringLiteral("SetGlobalConnectionState"), {state}); }
    void setProperty(const QString& name, const QVariant& value) const {
        callNetwork(QStringLiteral("UpdateProperties"), {network_, QVariantMap{{name, value}}});
    }

    LoginSignals signals_{bus()};
    int wakes_ = 0;
    int changes_ = 0;
};

TEST_F(LoginSignalsTest, TellsOfTheEndOfASleepAndNotOfItsBeginning) {
    startMock(login_, QStringLiteral("logind"));
    auto listening = signals_.listen(*this);
    for (int nights = 1; nights <= 2; ++nights) {
        prepareForSleep(true);
        prepareForSleep(false);
        waitUntil([&] { return wakes_ >= nights; });
        EXPECT_EQ(wakes_, nights);
    }
    listening.reset();
    prepareForSleep(false);
    settle();
    EXPECT_EQ(wakes_, 2);
    EXPECT_EQ(changes_, 0);
}

TEST_F(LoginSignalsTest, TellsOnceOfANetworkThatGoesAndComesInOneStroke) {
    // It starts later than the listening, as after an update.
    const auto listening = signals_.listen(*this);
    startMock(network_, QStringLiteral("networkmanager"));
    for (const uint state : {20U, 40U, 60U, 70U}) setState(state);
    setProperty(QStringLiteral("Connectivity"), 1U);
    waitUntil([&] { return changes_ > 0; });
    EXPECT_EQ(changes_, 1);
    setProperty(QStringLiteral("Connectivity"), 4U);
    waitUntil([&] { return changes_ > 1; });
    EXPECT_EQ(wakes_, 0);
}

} // namespace
} // namespace lumaro
