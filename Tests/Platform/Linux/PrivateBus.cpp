// SPDX-License-Identifier: Apache-2.0
#include "Tests/Platform/Linux/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QProcessEnvironment>

#include <filesystem>
#include <fstream>

namespace lumaro {
namespace {

constexpr auto configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

QString qtString(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

BusTest::BusTest() : bus_(noBus()) {
    std::string pattern = testing::TempDir() + "lumaro-XXXXXX";
    folder_ = mkdtemp(pattern.data());
    heartbeat_.start(std::chrono::milliseconds{5});
    startBus();
}

BusTest::~BusTest() {
    QDBusConnection::disconnectFromBus(bus_.name());
    while (!processes_.empty()) {
        stop(*processes_.back());
        processes_.pop_back();
    }
    std::filesystem::remove_all(folder_);
}

void BusTest::startBus() {
    const auto socket = qtString(path("bus"));
    std::ofstream{path("bus.conf")} << QString::fromLatin1(configuration).arg(socket).toStdString();
    const auto address = "unix:path=" + socket.toUtf8();
    // The libraries of what is tested find it as they would find a session's.
    for (const auto* name : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"}) qputenv(name, address);
    for (const auto* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
        qputenv(name, QByteArray::fromStdString(folder_));
    }
    auto& daemon = *processes_.emplace_back(std::make_unique<QProcess>());
    daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                                                 QStringLiteral("--config-file=") + qtString(path("bus.conf"))});
    waitUntil([&] { return daemon.canReadLine() || daemon.state() == QProcess::NotRunning; });
    bus_ = QDBusConnection::connectToBus(QString::fromUtf8(address), qtString(folder_));
    EXPECT_TRUE(bus_.isConnected()) << bus_.lastError().message().toStdString();
}

QDBusConnection BusTest::noBus() {
    return QDBusConnection::connectToBus(QStringLiteral("unix:path=/nowhere/bus"), QStringLiteral("nowhere"));
}

QProcess& BusTest::startService(const QString& name, const QString& program, const QStringList& arguments,
                                const QByteArray& input) {
    auto& process = *processes_.emplace_back(std::make_unique<QProcess>());
    // Its words would fill the pipe.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    bool isThere = false;
    QDBusServiceWatcher watcher{name, bus_, QDBusServiceWatcher::WatchForRegistration};
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &watcher, [&] { isThere = true; });
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    waitUntil([&] { return isThere || process.state() == QProcess::NotRunning; });
    EXPECT_TRUE(isThere) << program.toStdString() << " did not start: " << process.errorString().toStdString();
    return process;
}

QProcess& BusTest::startMock(const QString& name, const QString& kind, const QByteArray& parameters) {
    // The system's own Python, which has the package.
    return startService(name, QStringLiteral("/usr/bin/python3"),
                        {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--template"), kind,
                         QStringLiteral("--parameters"), QString::fromUtf8(parameters)});
}

void BusTest::stop(QProcess& process) {
    process.kill();
    EXPECT_TRUE(process.state() == QProcess::NotRunning || process.waitForFinished());
}

QDBusMessage BusTest::call(const QString& service, const QString& object, const QString& interface,
                           const QString& method, const QVariantList& arguments) const {
    auto message = QDBusMessage::createMethodCall(service, object, interface, method);
    message.setArguments(arguments);
    auto answer = bus_.call(message);
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    return answer;
}

bool BusTest::isOwned(const QString& name) const {
    return bus_.interface()->isServiceRegistered(name);
}

QStringList BusTest::matchRules() const {
    const auto answer = call(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                             QStringLiteral("org.freedesktop.DBus.Debug.Stats"), QStringLiteral("GetAllMatchRules"));
    auto rules = qdbus_cast<QMap<QString, QStringList>>(answer.arguments().value(0)).value(bus_.baseService());
    rules.sort();
    return rules;
}

} // namespace lumaro
