// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Platform/Qt/QtTest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

namespace lumaro {

/// A test with a folder and a message bus of its own, session bus and system bus in one. Nothing answers on it but what
/// the test starts; the home of those is the folder.
class BusTest : public QtTest {
public:
    BusTest(const BusTest&) = delete;
    BusTest& operator=(const BusTest&) = delete;
    ~BusTest() override;

protected:
    BusTest();

    std::string path(const std::string& name) const { return folder_ + "/" + name; }
    const QDBusConnection& bus() const { return bus_; }
    /// A bus that is not there.
    static QDBusConnection noBus();

    /// Starts a program and waits until it owns `name` on the bus. It ends with the test.
    QProcess& startService(const QString& name, const QString& program, const QStringList& arguments,
                           const QByteArray& input = {});
    /// The same for a stand-in of python3-dbusmock, as it is made by its template `kind`.
    QProcess& startMock(const QString& name, const QString& kind, const QByteArray& parameters = "{}");
    static void stop(QProcess& process);

    /// The answer to a call, which must not fail.
    QDBusMessage call(const QString& service, const QString& object, const QString& interface, const QString& method,
                      const QVariantList& arguments = {}) const;
    bool isOwned(const QString& name) const;
    /// What the bus passes on to this program.
    QStringList matchRules() const;

private:
    void startBus();

    // A loop that waits for what comes from elsewhere looks for it.
    QTimer heartbeat_;
    std::string folder_;
    std::vector<std::unique_ptr<QProcess>> processes_;
    QDBusConnection bus_;
};

} // namespace lumaro
