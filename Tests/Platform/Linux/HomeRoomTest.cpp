// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/AvahiRooms.h"
#include "Platform/Linux/UserRoom.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Tests/Platform/Linux/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>

#include <filesystem>
#include <fstream>
#include <optional>

namespace lumaro {
namespace {

const auto avahiName = QStringLiteral("org.freedesktop.Avahi");
const auto managerName = QStringLiteral("org.freedesktop.systemd1");

class RoomsNearbyTest : public BusTest {
protected:
    /// Another program of this network.
    static QDBusConnection other() {
        static int count = 0;
        return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                                             QStringLiteral("rooms-%1").arg(++count));
    }
    QProcess& startAvahi() {
        return startService(avahiName, QStringLiteral("/usr/bin/python3"),
                            {QStringLiteral(LUMARO_BLACK_BOX_DIR "/network_names.py")});
    }
    RoomsNearby::Heard hearing() {
        return [this](const std::vector<NearbyRoom>& rooms) { heard_ = rooms; };
    }

    std::vector<NearbyRoom> heard_;
};

TEST_F(RoomsNearbyTest, WhatOneAnnouncesTheOtherFindsUntilItEnds) {
    AvahiRooms ann{other()};
    AvahiRooms bea{other()};
    AvahiRooms cleo{other()};
    // The daemon starts later than whoever asks, as at login.
    auto announcing = ann.announce("Ann", 7700);
    const auto browsing = bea.browse(hearing());
    int own = 0;
    const auto watching = ann.browse([&](const auto& rooms) { own += static_cast<int>(rooms.size()); });
    auto& daemon = startAvahi();
    waitUntil([&] { return heard_.size() == 1; });
    EXPECT_EQ(heard_, (std::vector<NearbyRoom>{{"Ann", "127.0.0.1", 7700}}));
    const auto second = cleo.announce("Ann", 7701);
    waitUntil([&] { return heard_.size() == 2; });
    EXPECT_EQ(heard_.at(1), (NearbyRoom{"Ann #2", "127.0.0.1", 7701}));
    announcing.reset();
    waitUntil([&] { return heard_.size() == 1; });
    stop(daemon);
    waitUntil([&] { return heard_.empty(); });
    startAvahi();
    waitUntil([&] { return heard_.size() == 1; });
    EXPECT_EQ(heard_, (std::vector<NearbyRoom>{{"Ann", "127.0.0.1", 7701}}));
    EXPECT_GT(own, 0) << "of others it hears, too";
}

TEST_F(RoomsNearbyTest, NamesOfAnyLengthAreAnnouncedAndWithoutADaemonNothingHappens) {
    AvahiRooms nobody{noBus()};
    const auto unheard = nobody.announce("Ann", 7700);
    const auto deaf = nobody.browse(hearing());
    startAvahi();
    AvahiRooms ann{other()};
    AvahiRooms bea{other()};
    const auto browsing = bea.browse(hearing());
    std::string name;
    for (int i = 0; i < 40; ++i) name += "ä";
    const auto announcing = ann.announce(name + "\nx", 7700);
    waitUntil([&] { return !heard_.empty(); });
    EXPECT_EQ(heard_.at(0).name, name.substr(0, 62)) << "whole characters, at most 63 bytes";
}

/// The person's systemd, as far as it is asked; it refuses what the test says.
class StandInManager final : public QDBusVirtualObject {
public:
    explicit StandInManager(QDBusConnection bus) : bus_(std::move(bus)) {
        EXPECT_TRUE(bus_.registerVirtualObject(QStringLiteral("/org/freedesktop/systemd1"), this));
        EXPECT_TRUE(bus_.registerService(managerName));
    }
    StandInManager(const StandInManager&) = delete;
    StandInManager& operator=(const StandInManager&) = delete;
    ~StandInManager() override { bus_.unregisterService(managerName); }

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        const auto first = message.arguments().value(0);
        const auto unit = first.canConvert<QStringList>() ? first.toStringList().join(u' ') : first.toString();
        calls.append((message.member() + u' ' + unit).trimmed());
        bus.send(message.member() == refused ? message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no"))
                                             : message.createReply());
        return true;
    }

    QStringList calls;
    QString refused;

private:
    QDBusConnection bus_;
};

class UserRoomTest : public BusTest {
protected:
    // A program that says it listens, and goes on until it is told to end.
    std::string program() {
        const auto file = path("lumaro-room");
        std::ofstream{file} << "#!/bin/sh\necho $$ >> '" << path("runs") << "'\necho \"$@\" >> '" << path("said")
                            << "'\necho listening on x\nexec sleep 60\n";
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }
    UserRoom::Setup setup() {
        return {.program = program(),
                .database = path("a b%/room.db"),
                .unitName = "lumaro-room.service",
                .unitFolder = path("units")};
    }
    std::string textIn(const std::string& name) const {
        std::ifstream file{path(name)};
        return {std::istreambuf_iterator{file}, {}};
    }
    std::expected<HomeRoom::Running, std::string> started(UserRoom& room, std::uint16_t port) {
        std::optional<std::expected<HomeRoom::Running, std::string>> told;
        room.start(port, [&](auto outcome) { told = std::move(outcome); });
        waitUntil([&] { return told.has_value(); });
        return told.value_or(std::unexpected("nothing was told"));
    }

    PosixFileSystem files_;
};

TEST_F(UserRoomTest, AUnitOfThePersonsOwnKeepsItAndGoesWhenItIsSwitchedOff) {
    StandInManager manager{bus()};
    UserRoom room{files_, setup(), bus(), noBus()};
    const auto running = started(room, 7712);
    ASSERT_TRUE(running) << running.error();
    EXPECT_EQ(running->lasts, HomeRoom::Lasts::withLogin);
    EXPECT_EQ(running->port, 7712);
    const auto unit = textIn("units/lumaro-room.service");
    EXPECT_NE(unit.find("ExecStart=\"" + path("lumaro-room") + "\" \"--listen\" \"0.0.0.0:7712\""), std::string::npos)
        << unit;
    EXPECT_NE(unit.find("a b%%/room.db\""), std::string::npos) << unit;
    EXPECT_NE(unit.find("WantedBy=default.target"), std::string::npos);
    EXPECT_EQ(manager.calls,
              (QStringList{QStringLiteral("Reload"), QStringLiteral("EnableUnitFiles lumaro-room.service"),
                           QStringLiteral("RestartUnit lumaro-room.service")}));
    manager.calls.clear();
    UserRoom again{files_, setup(), bus(), noBus()};
    EXPECT_TRUE(started(again, 7712));
    EXPECT_TRUE(manager.calls.contains(QStringLiteral("StartUnit lumaro-room.service"))) << "what runs goes on";
    manager.calls.clear();
    again.stop();
    waitUntil([&] { return manager.calls.size() == 3; });
    EXPECT_EQ(manager.calls,
              (QStringList{QStringLiteral("StopUnit lumaro-room.service"),
                           QStringLiteral("DisableUnitFiles lumaro-room.service"), QStringLiteral("Reload")}));
    EXPECT_FALSE(std::filesystem::exists(path("units/lumaro-room.service")));
}

TEST_F(UserRoomTest, WithoutAManagerThatWillItIsAChildThatComesBack) {
    StandInManager manager{bus()};
    manager.refused = QStringLiteral("EnableUnitFiles");
    auto room = std::make_unique<UserRoom>(files_, setup(), bus(), noBus());
    const auto running = started(*room, 0);
    ASSERT_TRUE(running) << running.error();
    EXPECT_EQ(running->lasts, HomeRoom::Lasts::withProgram);
    EXPECT_GT(running->port, 0);
    EXPECT_NE(textIn("said").find("--only-from 127.0.0.0/8,"), std::string::npos);
    EXPECT_EQ(started(*room, running->port), running) << "one that runs goes on";
    const auto process = std::stoi(textIn("runs"));
    room.reset();
    EXPECT_EQ(::kill(process, 0), -1) << "it went with the program";
    auto broken = setup();
    broken.program = path("nothing");
    UserRoom none{files_, broken, noBus(), noBus()};
    EXPECT_FALSE(started(none, 7712));
}

} // namespace
} // namespace lumaro
