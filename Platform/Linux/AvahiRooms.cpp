// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/AvahiRooms.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QHostInfo>
#include <QObject>

#include <algorithm>
#include <list>
#include <utility>

namespace lumaro {
namespace {

// What Avahi's interface calls AVAHI_IF_UNSPEC, AVAHI_PROTO_UNSPEC and AVAHI_PROTO_INET.
constexpr int anyInterface = -1;
constexpr int anyProtocol = -1;
constexpr int protocolInet = 0;
constexpr uint ownResult = 16; ///< AVAHI_LOOKUP_RESULT_OUR_OWN
constexpr int groupCollision = 3;
constexpr int maxServiceNameBytes = 63; ///< RFC 6763, of the name of an instance

QString avahi() {
    return QStringLiteral("org.freedesktop.Avahi");
}
QString browserInterface() {
    return QStringLiteral("org.freedesktop.Avahi.ServiceBrowser");
}
QString groupInterface() {
    return QStringLiteral("org.freedesktop.Avahi.EntryGroup");
}
QString serviceType() {
    return QStringLiteral("_lumaro._tcp");
}

// Whole characters only.
QString instanceName(const std::string& name) {
    auto text = QString::fromStdString(name).simplified();
    while (text.toUtf8().size() > maxServiceNameBytes) text.chop(text.back().isLowSurrogate() ? 2 : 1);
    return text.isEmpty() ? QStringLiteral("lumaro") : text;
}

/// Something that the daemon does for this program while it lives, also after the daemon was away.
class AvahiTask : public QObject, public RoomsNearby::Handle {
public:
    explicit AvahiTask(QDBusConnection bus)
        : bus_(std::move(bus)), watcher_(avahi(), bus_, QDBusServiceWatcher::WatchForOwnerChange) {
        QObject::connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
                         [this](const QString&, const QString&, const QString& owner) {
                             object_.clear();
                             left();
                             if (!owner.isEmpty()) begin();
                         });
    }
    AvahiTask(const AvahiTask&) = delete;
    AvahiTask& operator=(const AvahiTask&) = delete;
    ~AvahiTask() override {
        if (!object_.isEmpty()) bus_.send(methodCall(object_, interface_, QStringLiteral("Free")));
    }

protected:
    QDBusConnection& bus() { return bus_; }
    const QString& object() const { return object_; }
    /// What the daemon made for this program, to be given back in the end.
    void setObject(const QString& path, const QString& interface) {
        object_ = path;
        interface_ = interface;
    }

    virtual void begin() = 0;
    /// The daemon is gone, with all that it made.
    virtual void left() {}

    static QDBusMessage methodCall(const QString& path, const QString& interface, const QString& method,
                                   const QVariantList& arguments = {}) {
        auto call = QDBusMessage::createMethodCall(avahi(), path, interface, method);
        call.setArguments(arguments);
        return call;
    }
    static QDBusMessage serverCall(const QString& method, const QVariantList& arguments = {}) {
        return methodCall(QStringLiteral("/"), QStringLiteral("org.freedesktop.Avahi.Server"), method, arguments);
    }
    /// A daemon that does not answer, or refuses, is one that is not there.
    template <class Then>
    void ask(const QDBusMessage& call, Then then) {
        auto* const watcher = new QDBusPendingCallWatcher{bus_.asyncCall(call), this};
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                         [then = std::move(then)](QDBusPendingCallWatcher* done) mutable {
                             done->deleteLater();
                             if (!done->isError()) then(done->reply());
                         });
    }

private:
    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    QString object_;
    QString interface_;
};

class Announcing final : public AvahiTask {
    Q_OBJECT

public:
    Announcing(QDBusConnection bus, const std::string& name, std::uint16_t port)
        : AvahiTask(std::move(bus)), wanted_(instanceName(name)), port_(port) {
        this->bus().connect(avahi(), QString{}, groupInterface(), QStringLiteral("StateChanged"), this,
                            SLOT(stateChanged(int, QString, QDBusMessage)));
        begin();
    }

private Q_SLOTS:
    void stateChanged(int state, const QString& /*error*/, const QDBusMessage& signal) {
        if (state == groupCollision && signal.path() == object()) takeOther();
    }

private:
    void begin() override {
        name_ = wanted_;
        tries_ = 0;
        ask(serverCall(QStringLiteral("EntryGroupNew")), [this](const QDBusMessage& reply) {
            setObject(reply.arguments().value(0).value<QDBusObjectPath>().path(), groupInterface());
            add();
        });
    }

    void add() {
        // "aay": what else there is to know of the room, which is nothing.
        QDBusArgument texts;
        texts.beginArray(QMetaType::fromType<QByteArray>());
        texts.endArray();
        const QVariantList service{anyInterface,
                                   anyProtocol,
                                   0U,
                                   name_,
                                   serviceType(),
                                   QString{},
                                   QString{},
                                   QVariant::fromValue(port_),
                                   QVariant::fromValue(texts)};
        auto* const watcher = new QDBusPendingCallWatcher{
            bus().asyncCall(methodCall(object(), groupInterface(), QStringLiteral("AddService"), service)), this};
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* done) {
            done->deleteLater();
            // A name that this computer tells of already is refused at once; one of another computer later.
            if (done->isError()) {
                if (done->error().name().endsWith(QStringLiteral("CollisionError"))) takeOther();
                return;
            }
            bus().send(methodCall(object(), groupInterface(), QStringLiteral("Commit")));
        });
    }

    void takeOther() {
        constexpr int mostTries = 16;
        if (++tries_ > mostTries) return;
        bus().send(methodCall(object(), groupInterface(), QStringLiteral("Reset")));
        ask(serverCall(QStringLiteral("GetAlternativeServiceName"), {name_}), [this](const QDBusMessage& reply) {
            name_ = reply.arguments().value(0).toString();
            add();
        });
    }

    QString wanted_;
    QString name_; ///< that one, or one like it that is free
    std::uint16_t port_;
    int tries_ = 0;
};

class Browsing final : public AvahiTask {
    Q_OBJECT

public:
    Browsing(QDBusConnection bus, RoomsNearby::Heard heard) : AvahiTask(std::move(bus)), heard_(std::move(heard)) {
        // Before there is a browser: its first words may be on the bus before its path is.
        this->bus().connect(avahi(), QString{}, browserInterface(), QStringLiteral("ItemNew"), this,
                            SLOT(itemNew(int, int, QString, QString, QString, uint)));
        this->bus().connect(avahi(), QString{}, browserInterface(), QStringLiteral("ItemRemove"), this,
                            SLOT(itemRemove(int, int, QString, QString, QString, uint)));
        begin();
    }

private Q_SLOTS:
    void itemNew(int interface, int protocol, const QString& name, const QString& type, const QString& domain,
                 uint flags) {
        if (type != serviceType() || (flags & ownResult) != 0) return;
        // One for each interface and protocol: the first that tells an address counts.
        auto known = find(name);
        if (known == found_.end()) {
            if (found_.size() == RoomsNearby::maxRooms) return;
            known = found_.insert(found_.end(), Found{.name = name, .room = {}, .isResolved = false});
        }
        ++known->ways;
        if (known->isResolved) return;
        ask(serverCall(QStringLiteral("ResolveService"), {interface, protocol, name, type, domain, protocolInet, 0U}),
            [this, name](const QDBusMessage& reply) { resolved(name, reply.arguments()); });
    }

    void itemRemove(int /*interface*/, int /*protocol*/, const QString& name, const QString& type,
                    const QString& /*domain*/, uint /*flags*/) {
        const auto gone = type == serviceType() ? find(name) : found_.end();
        if (gone == found_.end() || --gone->ways > 0) return;
        found_.erase(gone);
        tell();
    }

    void looked(const QHostInfo& known) {
        const auto named = std::ranges::find(found_, known.lookupId(), &Found::lookUp);
        if (known.error() != QHostInfo::NoError || named == found_.end()) return;
        named->room.host = known.hostName().toStdString();
        tell();
    }

private:
    struct Found {
        QString name;
        NearbyRoom room;
        bool isResolved = false;
        int ways = 0;    ///< on which it is told of
        int lookUp = -1; ///< of its host's name
    };

    void begin() override {
        ask(serverCall(QStringLiteral("ServiceBrowserNew"), {anyInterface, anyProtocol, serviceType(), QString{}, 0U}),
            [this](const QDBusMessage& reply) {
                setObject(reply.arguments().value(0).value<QDBusObjectPath>().path(), browserInterface());
            });
    }
    void left() override {
        if (found_.empty()) return;
        found_.clear();
        tell();
    }

    // interface, protocol, name, type, domain, host, protocol, address, port, texts, flags
    void resolved(const QString& name, const QVariantList& answer) {
        const auto host = answer.value(5).toString();
        const auto address = answer.value(7).toString();
        const auto port = answer.value(8).toUInt();
        constexpr uint maxPort = 65535;
        if (address.isEmpty() || port == 0 || port > maxPort) return;
        const auto place = find(name);
        if (place == found_.end() || std::exchange(place->isResolved, true)) return;
        place->room = {
            .name = name.toStdString(), .host = address.toStdString(), .port = static_cast<std::uint16_t>(port)};
        tell();
        // A name outlasts an address, where this computer can look it up.
        if (!host.endsWith(QStringLiteral(".local"))) return;
        place->lookUp = QHostInfo::lookupHost(host, this, SLOT(looked(QHostInfo)));
    }

    std::list<Found>::iterator find(const QString& name) { return std::ranges::find(found_, name, &Found::name); }

    void tell() {
        std::vector<NearbyRoom> rooms;
        for (const auto& one : found_) {
            if (one.isResolved) rooms.push_back(one.room);
        }
        heard_(rooms);
    }

    RoomsNearby::Heard heard_;
    std::list<Found> found_;
};

} // namespace

std::unique_ptr<RoomsNearby::Handle> AvahiRooms::announce(const std::string& name, std::uint16_t port) {
    if (!bus_.isConnected()) return std::make_unique<Handle>();
    return std::make_unique<Announcing>(bus_, name, port);
}

std::unique_ptr<RoomsNearby::Handle> AvahiRooms::browse(Heard heard) {
    if (!bus_.isConnected()) return std::make_unique<Handle>();
    return std::make_unique<Browsing>(bus_, std::move(heard));
}

} // namespace lumaro

#include "Platform/Linux/AvahiRooms.moc"
