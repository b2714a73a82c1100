// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/GeoCluePosition.h"

#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace lumaro {
namespace {

QString geoClueName() {
    return QStringLiteral("org.freedesktop.GeoClue2");
}
QString managerPath() {
    return QStringLiteral("/org/freedesktop/GeoClue2/Manager");
}
QString managerInterface() {
    return QStringLiteral("org.freedesktop.GeoClue2.Manager");
}
QString clientInterface() {
    return QStringLiteral("org.freedesktop.GeoClue2.Client");
}

// Of the file that is installed, Packaging/Linux/lumaro.desktop, by which GeoClue and the desktop know the program.
QString desktopId() {
    return QStringLiteral("lumaro");
}

// GClueAccuracyLevel.
uint levelOf(HerePrecision precision) {
    switch (precision) {
    case HerePrecision::neighbourhood: return 5;
    case HerePrecision::block: return 6;
    }
    std::unreachable();
}

void deleteClient(const QDBusConnection& bus, const QString& owner, const QString& client) {
    auto call =
        QDBusMessage::createMethodCall(owner, managerPath(), managerInterface(), QStringLiteral("DeleteClient"));
    call.setArguments({QVariant::fromValue(QDBusObjectPath{client})});
    bus.send(call);
}

LocationAccess accessOf(const QDBusError& error) {
    return error.type() == QDBusError::AccessDenied ? LocationAccess::denied : LocationAccess::restricted;
}

class GeoClueTry final : public PositionTry {
    Q_OBJECT

public:
    GeoClueTry(Setup setup, HerePrecision precision);
    GeoClueTry(const GeoClueTry&) = delete;
    GeoClueTry& operator=(const GeoClueTry&) = delete;
    ~GeoClueTry() override;

private Q_SLOTS:
    void locationUpdated(const QDBusObjectPath& before, const QDBusObjectPath& now);

private:
    void createClient();
    void startClient();
    void started(const QDBusError& error);
    void readLocation();
    void setProperty(const QString& name, const QVariant& value);
    QDBusMessage clientCall(const QString& method) const;

    HerePrecision precision_;
    std::optional<QDBusPendingCall> creation_; ///< while it is under way
    QString client_;                           ///< its path, once there is one
    QString location_;                         ///< the path of the newest one that was not read yet
    bool isReading_ = false;
};

// The service may be started by this first call. All that follows goes to the process that answered it.
GeoClueTry::GeoClueTry(Setup setup, HerePrecision precision) : PositionTry(std::move(setup)), precision_(precision) {
    const auto level = propertiesCall(geoClueName(), managerPath(), QStringLiteral("Get"),
                                      {managerInterface(), QStringLiteral("AvailableAccuracyLevel")});
    ask(level, limits().service, [this](const QDBusPendingReply<QDBusVariant>& reply) {
        if (reply.isError()) return finish(accessOf(reply.error()));
        hear(reply.reply().service());
        const auto value = reply.value().variant();
        if (value.metaType() == QMetaType::fromType<uint>() && value.toUInt() == 0) {
            return finish(LocationAccess::restricted);
        }
        createClient();
    });
}

// A client of its own, where GetClient would give the same one to each search of this program. GeoClue makes none
// before the desktop's agent is there, and where there is no agent says nothing. One that comes later is still given
// back.
void GeoClueTry::createClient() {
    const auto create =
        QDBusMessage::createMethodCall(owner(), managerPath(), managerInterface(), QStringLiteral("CreateClient"));
    QTimer::singleShot(limits().service, this, [this] {
        if (creation_) finish(LocationAccess::restricted);
    });
    creation_ = ask(create, limits().person, [this](const QDBusPendingReply<QDBusObjectPath>& reply) {
        creation_.reset();
        if (reply.isError()) return finish(accessOf(reply.error()));
        client_ = reply.value().path();
        startClient();
    });
}

// Listening first: the position may be there before Start has answered.
void GeoClueTry::startClient() {
    bus().connect(owner(), client_, clientInterface(), QStringLiteral("LocationUpdated"), QStringLiteral("oo"), this,
                  SLOT(locationUpdated(QDBusObjectPath, QDBusObjectPath)));
    setProperty(QStringLiteral("DesktopId"), desktopId());
    setProperty(QStringLiteral("RequestedAccuracyLevel"), levelOf(precision_));
    ask(clientCall(QStringLiteral("Start")), limits().person, [this](const QDBusPendingReply<>& reply) {
        if (reply.isError()) started(reply.error());
    });
}

// A person who has not answered yet may still do so, and then there is a position.
void GeoClueTry::started(const QDBusError& error) {
    if (error.type() != QDBusError::NoReply) finish(accessOf(error));
}

void GeoClueTry::locationUpdated(const QDBusObjectPath& /*before*/, const QDBusObjectPath& now) {
    location_ = now.path();
    if (!isReading_) readLocation();
}

// One at a time, however fast they come.
void GeoClueTry::readLocation() {
    const auto all = propertiesCall(owner(), std::exchange(location_, QString{}), QStringLiteral("GetAll"),
                                    {QStringLiteral("org.freedesktop.GeoClue2.Location")});
    isReading_ = true;
    ask(all, limits().service, [this](const QDBusPendingReply<QVariantMap>& reply) {
        isReading_ = false;
        const auto position = reply.isError() ? std::nullopt : positionIn(reply.value());
        if (position) return finish(*position);
        if (!location_.isEmpty()) readLocation();
    });
}

void GeoClueTry::setProperty(const QString& name, const QVariant& value) {
    bus().send(propertiesCall(owner(), client_, QStringLiteral("Set"),
                              {clientInterface(), name, QVariant::fromValue(QDBusVariant{value})}));
}

QDBusMessage GeoClueTry::clientCall(const QString& method) const {
    return QDBusMessage::createMethodCall(owner(), client_, clientInterface(), method);
}

GeoClueTry::~GeoClueTry() {
    if (!client_.isEmpty()) {
        bus().send(clientCall(QStringLiteral("Stop")));
        deleteClient(bus(), owner(), client_);
    } else if (creation_) {
        askKeeper(*creation_, [bus = bus(), owner = owner()](const QDBusPendingReply<QDBusObjectPath>& reply) {
            if (!reply.isError()) deleteClient(bus, owner, reply.value().path());
        });
    }
}

} // namespace

GeoCluePosition::GeoCluePosition(QDBusConnection bus, PositionLimits limits)
    : bus_(std::move(bus)), limits_(limits), keeper_(std::make_unique<QObject>()) {
}

std::unique_ptr<PositionSource::Search> GeoCluePosition::search(HerePrecision precision,
                                                                std::move_only_function<void(Answer)> then) {
    const auto begin = [this, precision](PositionTry::Over over) {
        return std::make_unique<GeoClueTry>(PositionTry::Setup{bus_, limits_, *keeper_, std::move(over)}, precision);
    };
    return std::make_unique<RepeatedSearch>(begin, limits_.pause, std::move(then));
}

} // namespace lumaro

#include "Platform/Linux/GeoCluePosition.moc"
