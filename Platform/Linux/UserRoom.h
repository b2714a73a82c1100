// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Services/HomeRoom.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>
#include <string>

namespace lumaro {

/// The program `lumaro-room` as the person's own service: a unit of their systemd, which starts it at each login and
/// again after a crash. Where there is none (or in a sandbox, which shows none) it is a child of this program.
class UserRoom final : public HomeRoom {
public:
    struct Setup {
        std::string program;    ///< the room's; empty where it is not installed
        std::string database;   ///< its folder is made
        std::string unitName;   ///< "lumaro-room.service"
        std::string unitFolder; ///< of the person's own units
    };
    /// Beside that program, else where programs are; empty when in neither.
    static std::string programBeside(const std::string& program);
    static std::string userUnitFolder();

    /// The file system outlives this. On the session's bus the person's systemd is found, on the system's bus Avahi,
    /// with which this computer's name means something in its network.
    UserRoom(FileSystem& files, Setup setup, QDBusConnection session = QDBusConnection::sessionBus(),
             QDBusConnection system = QDBusConnection::systemBus());
    UserRoom(const UserRoom&) = delete;
    UserRoom& operator=(const UserRoom&) = delete;
    ~UserRoom() override;

    bool isInstalled() override { return !setup_.program.empty(); }
    void start(std::uint16_t port, Started then) override;
    void stop() override;

private:
    class Run;
    class Unit;
    class Child;

    FileSystem& files_;
    Setup setup_;
    QDBusConnection session_;
    QDBusConnection system_;
    std::unique_ptr<Run> run_;
    QObject later_; ///< what is put off goes with this
};

} // namespace lumaro
