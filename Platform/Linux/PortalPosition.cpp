// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/PortalPosition.h"

#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QRandomGenerator>

#include <utility>

namespace lumaro {
namespace {

QString desktopName() {
    return QStringLiteral("org.freedesktop.portal.Desktop");
}
QString desktopPath() {
    return QStringLiteral("/org/freedesktop/portal/desktop");
}
QString locationInterface() {
    return QStringLiteral("org.freedesktop.portal.Location");
}
QString requestInterface() {
    return QStringLiteral("org.freedesktop.portal.Request");
}
QString sessionInterface() {
    return QStringLiteral("org.freedesktop.portal.Session");
}

// Of the option "accuracy".
uint accuracyOf(HerePrecision precision) {
    switch (precision) {
    case HerePrecision::neighbourhood: return 3;
    case HerePrecision::block: return 4;
    }
    std::unreachable();
}

// A name that nobody else guesses, for an object that the portal is going to make.
QString newToken() {
    return QStringLiteral("lumaro_%1").arg(QRandomGenerator::global()->generate64(), 16, 16, QLatin1Char{'0'});
}

void closeObject(const QDBusConnection& bus, const QString& owner, const QString& path, const QString& interface) {
    bus.send(QDBusMessage::createMethodCall(owner, path, interface, QStringLiteral("Close")));
}

void closeSession(const QDBusConnection& bus, const QString& owner, const QString& session) {
    closeObject(bus, owner, session, sessionInterface());
}

class PortalTry final : public PositionTry {
    Q_OBJECT

public:
    PortalTry(Setup setup, HerePrecision precision);
    PortalTry(const PortalTry&) = delete;
    PortalTry& operator=(const PortalTry&) = delete;
    ~PortalTry() override;

private Q_SLOTS:
    void responded(uint response, const QVariantMap& results);
    void sessionClosed();
    void locationUpdated(const QDBusObjectPath& session, const QVariantMap& location);

private:
    void createSession();
    void startSession();

    HerePrecision precision_;
    std::optional<QDBusPendingCall> creation_; ///< while it is under way
    QString session_;                          ///< its path, once there is one
    QString request_;                          ///< the path of the question to the person, while it is open
};

// The portal may be started by this first call. All that follows goes to the process that answered it.
PortalTry::PortalTry(Setup setup, HerePrecision precision) : PositionTry(std::move(setup)), precision_(precision) {
    const auto version = propertiesCall(desktopName(), desktopPath(), QStringLiteral("Get"),
                                        {locationInterface(), QStringLiteral("version")});
    ask(version, limits().service, [this](const QDBusPendingReply<QDBusVariant>& reply) {
        if (reply.isError()) return finish(LocationAccess::restricted);
        hear(reply.reply().service());
        createSession();
    });
}

void PortalTry::createSession() {
    bus().connect(owner(), desktopPath(), locationInterface(), QStringLiteral("LocationUpdated"), this,
                  SLOT(locationUpdated(QDBusObjectPath, QVariantMap)));
    auto create =
        QDBusMessage::createMethodCall(owner(), desktopPath(), locationInterface(), QStringLiteral("CreateSession"));
    create.setArguments({QVariantMap{{QStringLiteral("session_handle_token"), newToken()},
                                     {QStringLiteral("accuracy"), accuracyOf(precision_)}}});
    creation_ = ask(create, limits().service, [this](const QDBusPendingReply<QDBusObjectPath>& reply) {
        creation_.reset();
        if (reply.isError()) return finish(LocationAccess::restricted);
        session_ = reply.value().path();
        startSession();
    });
}

// Listening first: the person's answer, when the portal knows it already, may be there before Start has answered.
void PortalTry::startSession() {
    const auto token = newToken();
    const auto sender = bus().baseService().mid(1).replace(QLatin1Char{'.'}, QLatin1Char{'_'});
    request_ = desktopPath() + QStringLiteral("/request/") + sender + QLatin1Char{'/'} + token;
    bus().connect(owner(), session_, sessionInterface(), QStringLiteral("Closed"), this, SLOT(sessionClosed()));
    bus().connect(owner(), request_, requestInterface(), QStringLiteral("Response"), this,
                  SLOT(responded(uint, QVariantMap)));
    auto start = QDBusMessage::createMethodCall(owner(), desktopPath(), locationInterface(), QStringLiteral("Start"));
    start.setArguments({QVariant::fromValue(QDBusObjectPath{session_}), QString{},
                        QVariantMap{{QStringLiteral("handle_token"), token}}});
    ask(start, limits().service, [this](const QDBusPendingReply<QDBusObjectPath>& reply) {
        if (!reply.isError()) return;
        request_.clear();
        finish(LocationAccess::restricted);
    });
}

// Anything but a yes or a no, such as a service behind the portal that fails, leaves it open, and the portal has ended
// the session.
void PortalTry::responded(uint response, const QVariantMap& /*results*/) {
    request_.clear();
    if (response == 0) return;
    if (response == 1) return finish(LocationAccess::denied);
    finish(std::unexpected{TryEnd::nothing});
}

void PortalTry::sessionClosed() {
    session_.clear();
    finish(std::unexpected{TryEnd::nothing});
}

void PortalTry::locationUpdated(const QDBusObjectPath& session, const QVariantMap& location) {
    if (session_.isEmpty() || session.path() != session_) return;
    if (const auto position = positionIn(location)) finish(*position);
}

PortalTry::~PortalTry() {
    if (!request_.isEmpty()) closeObject(bus(), owner(), request_, requestInterface());
    if (!session_.isEmpty()) {
        closeSession(bus(), owner(), session_);
    } else if (creation_) {
        askKeeper(*creation_, [bus = bus(), owner = owner()](const QDBusPendingReply<QDBusObjectPath>& reply) {
            if (!reply.isError()) closeSession(bus, owner, reply.value().path());
        });
    }
}

} // namespace

PortalPosition::PortalPosition(QDBusConnection bus, PositionLimits limits)
    : bus_(std::move(bus)), limits_(limits), keeper_(std::make_unique<QObject>()) {
}

std::unique_ptr<PositionSource::Search> PortalPosition::search(HerePrecision precision,
                                                               std::move_only_function<void(Answer)> then) {
    const auto begin = [this, precision](PositionTry::Over over) {
        return std::make_unique<PortalTry>(PositionTry::Setup{bus_, limits_, *keeper_, std::move(over)}, precision);
    };
    return std::make_unique<RepeatedSearch>(begin, limits_.pause, std::move(then));
}

} // namespace lumaro

#include "Platform/Linux/PortalPosition.moc"
