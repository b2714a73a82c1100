// SPDX-License-Identifier: Apache-2.0
#include "Tests/Platform/Linux/StandInLocation.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <gtest/gtest.h>

#include <utility>

namespace lumaro {
namespace {

const auto geoClue = QStringLiteral("org.freedesktop.GeoClue2");
const auto geoClueRoot = QStringLiteral("/org/freedesktop/GeoClue2");
const auto portal = QStringLiteral("org.freedesktop.portal.");
const auto portalRoot = QStringLiteral("/org/freedesktop/portal/desktop");

QDBusConnection nextConnection() {
    static int count = 0;
    return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                         QStringLiteral("location-%1").arg(++count));
}

QVariant pathOf(const QString& path) {
    return QVariant::fromValue(QDBusObjectPath{path});
}

QString pathIn(const QDBusMessage& message) {
    return message.arguments().value(0).value<QDBusObjectPath>().path();
}

QVariantMap optionsIn(const QDBusMessage& message) {
    return qdbus_cast<QVariantMap>(message.arguments().constLast());
}

// "Get version", "Set DesktopId lumaro", "CreateSession 3", or the method alone.
QString wordsOf(const QDBusMessage& message) {
    auto method = message.member();
    const auto arguments = message.arguments();
    if (method == QStringLiteral("Get")) return method + u' ' + arguments.at(1).toString();
    if (method == QStringLiteral("Set")) {
        const auto value = arguments.at(2).value<QDBusVariant>().variant();
        return method + u' ' + arguments.at(1).toString() + u' ' + value.toString();
    }
    if (method == QStringLiteral("CreateSession")) {
        return method + u' ' + optionsIn(message).value(QStringLiteral("accuracy")).toString();
    }
    return method;
}

} // namespace

StandInLocation::StandInLocation(const QString& name, const QString& root) : bus_(nextConnection()) {
    EXPECT_TRUE(bus_.registerVirtualObject(root, this, QDBusConnection::SubPath));
    bus_.interface()->registerService(name, QDBusConnectionInterface::QueueService);
}

StandInLocation::~StandInLocation() {
    QDBusConnection::disconnectFromBus(bus_.name());
}

void StandInLocation::locate(const QVariant& latitude, const QVariant& longitude) {
    locate({{QStringLiteral("Latitude"), latitude},
            {QStringLiteral("Longitude"), longitude},
            {QStringLiteral("Accuracy"), 25.0}});
}

bool StandInLocation::handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) {
    calls.append(wordsOf(message));
    message.setDelayedReply(true);
    if (message.member() == held) {
        waiting_.push_back(message);
    } else {
        answer(message);
    }
    return true;
}

void StandInLocation::release() {
    held.clear();
    for (const auto& message : std::exchange(waiting_, {})) answer(message);
}

void StandInLocation::answer(const QDBusMessage& message) {
    const auto method = message.member();
    if (const auto refusal = refusals.find(method); refusal != refusals.end()) {
        EXPECT_TRUE(bus_.send(message.createErrorReply(refusal->second, QStringLiteral("no"))));
        return;
    }
    auto value = answerTo(message);
    if (const auto other = nonsense.find(method); other != nonsense.end()) value = other->second;
    if (message.isReplyRequired()) {
        EXPECT_TRUE(bus_.send(value.isValid() ? message.createReply(value) : message.createReply()));
    }
}

void StandInLocation::signal(const QString& to, const QString& path, const QString& interface, const QString& member,
                             const QVariantList& arguments) const {
    auto signal = QDBusMessage::createTargetedSignal(to, path, interface, member);
    signal.setArguments(arguments);
    EXPECT_TRUE(bus_.send(signal));
}

StandInGeoClue::StandInGeoClue() : StandInLocation(geoClue, geoClueRoot) {
}

void StandInGeoClue::locate(const QVariantMap& properties) {
    locations_.push_back(properties);
    for (const auto& client : active) update(client, geoClueRoot + QStringLiteral("/%1").arg(locations_.size() - 1));
}

void StandInGeoClue::update(const QString& client, const QString& location) const {
    signal(open.at(client), client, geoClue + QStringLiteral(".Client"), QStringLiteral("LocationUpdated"),
           {pathOf(QStringLiteral("/")), pathOf(location)});
}

QVariant StandInGeoClue::answerTo(const QDBusMessage& message) {
    const auto method = message.member();
    if (method == QStringLiteral("Get")) return QVariant::fromValue(QDBusVariant{level});
    if (method == QStringLiteral("CreateClient")) {
        const auto client = geoClueRoot + QStringLiteral("/Client/%1").arg(++clients_);
        open.emplace(client, message.service());
        return pathOf(client);
    }
    if (method == QStringLiteral("DeleteClient")) open.erase(pathIn(message));
    if (method == QStringLiteral("Start")) active.append(message.path());
    if (method == QStringLiteral("Stop")) active.removeAll(message.path());
    if (method == QStringLiteral("GetAll")) {
        return locations_.at(message.path().section(u'/', -1).toUInt());
    }
    return {};
}

StandInPortal::StandInPortal() : StandInLocation(portal + QStringLiteral("Desktop"), portalRoot) {
}

void StandInPortal::locate(const QVariantMap& properties) {
    for (const auto& session : started_) update(open.at(session), session, properties);
}

void StandInPortal::update(const QString& to, const QString& session, const QVariantMap& properties) const {
    signal(to, portalRoot, portal + QStringLiteral("Location"), QStringLiteral("LocationUpdated"),
           {pathOf(session), properties});
}

void StandInPortal::endSession() {
    const auto session = started_.takeFirst();
    signal(open.at(session), session, portal + QStringLiteral("Session"), QStringLiteral("Closed"), {QVariantMap{}});
    open.erase(session);
}

// The answer to the question comes before the answer to the call, as it may when the portal knows it already.
void StandInPortal::respond(const QDBusMessage& start) {
    const auto sender = start.service().mid(1).replace(u'.', u'_');
    const auto token = optionsIn(start).value(QStringLiteral("handle_token")).toString();
    signal(start.service(), portalRoot + QStringLiteral("/request/") + sender + u'/' + token,
           portal + QStringLiteral("Request"), QStringLiteral("Response"),
           {static_cast<uint>(response), QVariantMap{}});
}

QVariant StandInPortal::answerTo(const QDBusMessage& message) {
    const auto method = message.member();
    if (method == QStringLiteral("Get")) return QVariant::fromValue(QDBusVariant{1U});
    if (method == QStringLiteral("CreateSession")) {
        const auto token = optionsIn(message).value(QStringLiteral("session_handle_token")).toString();
        const auto session = portalRoot + QStringLiteral("/session/") + token;
        open.emplace(session, message.service());
        return pathOf(session);
    }
    if (method == QStringLiteral("Start")) {
        if (response == 0) started_.append(pathIn(message));
        if (response >= 0) respond(message);
        return pathOf(portalRoot + QStringLiteral("/request"));
    }
    if (method == QStringLiteral("Close")) {
        open.erase(message.path());
        started_.removeAll(message.path());
    }
    return {};
}

} // namespace lumaro
