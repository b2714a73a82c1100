// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/UserRoom.h"

#include "LumaroCore/Outbox/ReplaceFile.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkInterface>
#include <QProcess>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTcpServer>
#include <QTimer>

#include <sys/prctl.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

constexpr std::uint16_t usualPort = 7700;
constexpr std::chrono::milliseconds restartPause{5'000};
constexpr int goodbye = 3'000; ///< milliseconds for a child to store what it has
// Loopback, link-local and private networks: who else knocks is not let in.
constexpr auto nearbyRanges =
    "127.0.0.0/8,10.0.0.0/8,172.16.0.0/12,192.168.0.0/16,169.254.0.0/16,100.64.0.0/10,::1,fc00::/7,fe80::/10";

// A program of the person's own may have the port; then any will do, and is kept from then on.
std::uint16_t freePort() {
    QTcpServer server;
    if (server.listen(QHostAddress::Any, usualPort) || server.listen(QHostAddress::Any)) return server.serverPort();
    return 0;
}

// What others of the network call this computer.
std::string hostInNetwork(const QDBusConnection& system) {
    auto* const names = system.isConnected() ? system.interface() : nullptr;
    if (names != nullptr && names->isServiceRegistered(QStringLiteral("org.freedesktop.Avahi"))) {
        const auto name = QSysInfo::machineHostName().section(QLatin1Char{'.'}, 0, 0);
        if (!name.isEmpty()) return name.toLower().toStdString() + ".local";
    }
    const auto addresses = QNetworkInterface::allAddresses();
    for (const auto& address : addresses) {
        if (address.protocol() == QAbstractSocket::IPv4Protocol && !address.isLoopback() && !address.isLinkLocal()) {
            return address.toString().toStdString();
        }
    }
    return "127.0.0.1";
}

std::vector<std::string> argumentsOf(const std::string& database, const HomeRoom::Running& running) {
    const auto port = std::to_string(running.port);
    return {
        "--listen",    "0.0.0.0:" + port, "--database", database, "--public-url", "http://" + running.host + ":" + port,
        "--only-from", nearbyRanges,      "--threads",  "1"};
}

// As systemd.service(5) reads a command line: in quotes, "%" and "$" doubled.
std::string unitWord(const std::string& word) {
    std::string quoted = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\') quoted += '\\';
        if (c == '%' || c == '$') quoted += c;
        quoted += c;
    }
    return quoted + "\"";
}

std::string unitText(const std::string& program, const std::vector<std::string>& arguments) {
    std::string command = unitWord(program);
    for (const auto& argument : arguments) command += " " + unitWord(argument);
    return "[Unit]\nDescription=The room of this person's Lumaro board\n\n[Service]\nExecStart=" + command +
           "\nRestart=on-failure\nRestartSec=5\nNoNewPrivileges=yes\n"
           "\n[Install]\nWantedBy=default.target\n";
}

QDBusMessage managerCall(const QString& method, const QVariantList& arguments = {}) {
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.systemd1"),
                                               QStringLiteral("/org/freedesktop/systemd1"),
                                               QStringLiteral("org.freedesktop.systemd1.Manager"), method);
    call.setArguments(arguments);
    return call;
}

} // namespace

/// One way to have the room run.
class UserRoom::Run : public QObject {
public:
    /// Told once whether it runs.
    using Begun = std::function<void(std::expected<Running, std::string>)>;

    Run() = default;
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() override = default;

    virtual void begin(Running running, Begun begun) = 0;
    virtual void end() = 0;
};

class UserRoom::Unit final : public UserRoom::Run {
public:
    Unit(FileSystem& files, Setup setup, QDBusConnection bus)
        : files_(files), setup_(std::move(setup)), bus_(std::move(bus)) {}

    void begin(Running running, Begun begun) override {
        running.lasts = Lasts::withLogin;
        const auto text = unitText(setup_.program, argumentsOf(setup_.database, running));
        const auto known = files_.readFile(setup_.unitFolder + "/" + setup_.unitName);
        const bool isNew = !known || *known != text;
        if (isNew) {
            const auto written = replaceFile(files_, setup_.unitFolder, setup_.unitName, text);
            if (!written) return begun(std::unexpected(written.error().path + ": " + written.error().message));
        }
        const auto unit = QString::fromStdString(setup_.unitName);
        // One that runs as it should goes on; another is started anew with what it is told now.
        const auto start = isNew ? QStringLiteral("RestartUnit") : QStringLiteral("StartUnit");
        ask({managerCall(QStringLiteral("Reload")),
             managerCall(QStringLiteral("EnableUnitFiles"), {QStringList{unit}, false, true}),
             managerCall(start, {unit, QStringLiteral("replace")})},
            0, [running = std::move(running), begun = std::move(begun)](const QString& fault) {
                if (!fault.isEmpty()) return begun(std::unexpected(fault.toStdString()));
                begun(running);
            });
    }

    void end() override {
        const auto unit = QString::fromStdString(setup_.unitName);
        bus_.send(managerCall(QStringLiteral("StopUnit"), {unit, QStringLiteral("replace")}));
        bus_.send(managerCall(QStringLiteral("DisableUnitFiles"), {QStringList{unit}, false}));
        static_cast<void>(files_.removeFile(setup_.unitFolder + "/" + setup_.unitName));
        bus_.send(managerCall(QStringLiteral("Reload")));
    }

private:
    /// One call after the other; `then` hears what went wrong, or nothing.
    void ask(std::vector<QDBusMessage> calls, std::size_t index, std::function<void(const QString& fault)> then) {
        auto* const watcher = new QDBusPendingCallWatcher{bus_.asyncCall(calls.at(index)), this};
        QObject::connect(
            watcher, &QDBusPendingCallWatcher::finished, this,
            [this, calls = std::move(calls), index, then = std::move(then)](QDBusPendingCallWatcher* done) {
                done->deleteLater();
                if (done->isError()) return then(done->error().message());
                if (index + 1 == calls.size()) return then({});
                ask(calls, index + 1, then);
            });
    }

    FileSystem& files_;
    Setup setup_;
    QDBusConnection bus_;
};

class UserRoom::Child final : public UserRoom::Run {
public:
    explicit Child(Setup setup) : setup_(std::move(setup)) {
        process_.setStandardErrorFile(QProcess::nullDevice());
        // It goes with this program, also when that is killed: the next one wants the port.
        process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
        QObject::connect(&process_, &QProcess::readyReadStandardOutput, this, [this] { heard(); });
        QObject::connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) over();
        });
        QObject::connect(&process_, &QProcess::finished, this, [this] { over(); });
        again_.setSingleShot(true);
        again_.setInterval(restartPause);
        QObject::connect(&again_, &QTimer::timeout, this, [this] { run(); });
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() override { end(); }

    void begin(Running running, Begun begun) override {
        running_ = std::move(running);
        running_.lasts = Lasts::withProgram;
        begun_ = std::move(begun);
        if (process_.state() == QProcess::NotRunning) return run();
        QMetaObject::invokeMethod(this, [this] { tell(running_); }, Qt::QueuedConnection);
    }

    void end() override {
        again_.stop();
        begun_ = nullptr;
        process_.disconnect(this);
        if (process_.state() == QProcess::NotRunning) return;
        process_.terminate();
        if (!process_.waitForFinished(goodbye)) process_.kill();
    }

private:
    void run() {
        QStringList arguments;
        for (const auto& word : argumentsOf(setup_.database, running_)) arguments.append(QString::fromStdString(word));
        process_.start(QString::fromStdString(setup_.program), arguments);
    }

    // Its first line says that it listens.
    void heard() {
        if (process_.readAllStandardOutput().startsWith("listening")) tell(running_);
    }

    void over() {
        if (begun_) return tell(std::unexpected("the room's program ended at once"));
        again_.start();
    }

    void tell(std::expected<Running, std::string> outcome) {
        if (const auto begun = std::exchange(begun_, nullptr)) begun(std::move(outcome));
    }

    Setup setup_;
    Running running_;
    Begun begun_;
    QProcess process_;
    QTimer again_;
};

std::string UserRoom::programBeside(const std::string& program) {
    const auto name = QStringLiteral("lumaro-room");
    const auto folder = QFileInfo{QString::fromStdString(program)}.absolutePath();
    const auto beside = QStandardPaths::findExecutable(name, {folder});
    return (beside.isEmpty() ? QStandardPaths::findExecutable(name) : beside).toStdString();
}

std::string UserRoom::userUnitFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() + "/systemd/user";
}

UserRoom::UserRoom(FileSystem& files, Setup setup, QDBusConnection session, QDBusConnection system)
    : files_(files), setup_(std::move(setup)), session_(std::move(session)), system_(std::move(system)) {
}

UserRoom::~UserRoom() = default;

void UserRoom::start(std::uint16_t port, Started then) {
    const Running running{.port = port == 0 ? freePort() : port, .host = hostInNetwork(system_)};
    auto* const names = session_.isConnected() ? session_.interface() : nullptr;
    const bool hasManager = names != nullptr && names->isServiceRegistered(QStringLiteral("org.freedesktop.systemd1"));
    if (!run_ && hasManager) run_ = std::make_unique<Unit>(files_, setup_, session_);
    if (!run_) run_ = std::make_unique<Child>(setup_);
    const auto told = std::make_shared<Started>(std::move(then));
    run_->begin(running, [this, running, told](std::expected<Running, std::string> outcome) {
        const bool wasUnit = dynamic_cast<Unit*>(run_.get()) != nullptr;
        if (outcome || !wasUnit) return (*told)(std::move(outcome));
        // A manager that will not: the room runs under this program. Not from here, which is the manager's answer.
        QTimer::singleShot(0, &later_, [this, running, told] {
            if (!run_) return;
            run_->end();
            run_ = std::make_unique<Child>(setup_);
            run_->begin(running, [told](std::expected<Running, std::string> second) { (*told)(std::move(second)); });
        });
    });
}

void UserRoom::stop() {
    if (!run_) return;
    run_->end();
    run_.reset();
}

} // namespace lumaro
