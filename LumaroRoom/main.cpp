// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroRoom/Server/CommandLine.h"
#include "LumaroRoom/Server/LineLog.h"
#include "LumaroRoom/Server/Server.h"
#include "LumaroRoom/Server/SystemRandomSource.h"
#include "LumaroRoom/Setup/SetupProbe.h"
#include "LumaroRoom/Sqlite/DatabaseFiles.h"
#include "LumaroRoom/Sqlite/Maintenance.h"
#include "LumaroRoom/Sqlite/SqliteStore.h"
#include "Platform/Posix/SystemClock.h"

#include <sys/resource.h>

#include <csignal>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>

namespace lumaro {
namespace {

constexpr int failed = 1;
constexpr int misused = 2;

int fail(std::string_view message) {
    std::cerr << "lumaro-room: " << message << '\n';
    return failed;
}

// Blocked before any thread runs, so that all threads leave the signals to this one.
sigset_t holdSignals() {
    sigset_t signals{};
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGTERM);
    ::sigaddset(&signals, SIGINT);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

// A connection is a descriptor; the soft limit is made for programs with few.
void useAllDescriptors() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

int serve(ServeCommand command) {
    const auto signals = holdSignals();
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN)); // whoever reads the log may go
    useAllDescriptors();
    SystemClock clock;
    SystemRandomSource random;
    LineLog log{clock, command.config.logLevel};
    const auto& path = command.config.databasePath;
    if (const auto made = makeFolderOf(path); !made) {
        return fail("the database's folder cannot be made: " + made.error().message);
    }
    auto store = SqliteStore::open(path, log);
    if (!store) return fail("the database cannot be opened: " + store.error().message);
    const auto server = Server::start(std::move(command.config), std::move(*store), {clock, random, log});
    if (!server) return fail(server.error());
    std::cout << "listening on " << (*server)->url() << '\n'
              << std::flush; // whoever waits for the line gets it at once
    int signal = 0;
    ::sigwait(&signals, &signal);
    (*server)->stop();
    return 0;
}

int ended(const StoreResult<void>& done, std::string_view verb) {
    return done ? 0 : fail(std::string{verb} + ": " + done.error().message);
}

int check(const CheckCommand& command) {
    const auto report = Maintenance::check(command.databasePath);
    if (!report) return fail("check: " + report.error().message);
    std::cout << report->text();
    return report->isSound() ? 0 : failed;
}

int checkSetup(const CheckSetupCommand& command) {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    SystemClock clock;
    const auto report = judge(lookAt(command.url, clock));
    std::cout << report.text();
    return report.exitStatus();
}

} // namespace
} // namespace lumaro

int main(int argc, char** argv) {
    using namespace lumaro;
    auto command = parseCommandLine({argv, static_cast<std::size_t>(argc)});
    if (!command) {
        std::cerr << "lumaro-room: " << command.error() << " (see --help)\n";
        return misused;
    }
    return std::visit(Overloaded{
                          [](ServeCommand& serving) { return serve(std::move(serving)); },
                          [](const BackupCommand& backup) {
                              return ended(Maintenance::backup(backup.databasePath, backup.file), "backup");
                          },
                          [](const RestoreCommand& restore) {
                              return ended(Maintenance::restore(restore.file, restore.databasePath), "restore");
                          },
                          [](const CheckCommand& asked) { return check(asked); },
                          [](const CheckSetupCommand& asked) { return checkSetup(asked); },
                          [](const HelpCommand& help) {
                              std::cout << help.text << '\n';
                              return 0;
                          },
                      },
                      *command);
}
