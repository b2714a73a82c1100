// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/LoginSignals.h"

#include <QNetworkInformation>
#include <QTimer>
#include <QVariantMap>

#include <chrono>
#include <utility>

namespace lumaro {
namespace {

// A change of the network comes as several signals.
constexpr std::chrono::milliseconds stroke{100};

class BusListening final : public QObject, public SystemSignals::Listening {
    Q_OBJECT

public:
    BusListening(QDBusConnection bus, SystemListener& listener) : bus_(std::move(bus)), listener_(listener) {
        stroke_.setSingleShot(true);
        stroke_.setInterval(stroke);
        QObject::connect(&stroke_, &QTimer::timeout, this, [this] { listener_.networkChanged(); });
        hearLoginManager();
        hearNetworkManager();
        hearQt();
    }

private Q_SLOTS:
    void prepareForSleep(bool isAboutTo) {
        if (!isAboutTo) listener_.wokeFromSleep();
    }
    void networkState(uint /*state*/) { stroke_.start(); }
    void networkProperties(const QString& /*interface*/, const QVariantMap& changed, const QStringList& /*others*/) {
        if (changed.contains(QStringLiteral("PrimaryConnection")) || changed.contains(QStringLiteral("Connectivity"))) {
            stroke_.start();
        }
    }

private:
    void hearLoginManager() {
        bus_.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                     QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
                     SLOT(prepareForSleep(bool)));
    }

    void hearNetworkManager() {
        const auto service = QStringLiteral("org.freedesktop.NetworkManager");
        const auto object = QStringLiteral("/org/freedesktop/NetworkManager");
        bus_.connect(service, object, service, QStringLiteral("StateChanged"), this, SLOT(networkState(uint)));
        bus_.connect(service, object, QStringLiteral("org.freedesktop.DBus.Properties"),
                     QStringLiteral("PropertiesChanged"), this,
                     SLOT(networkProperties(QString, QVariantMap, QStringList)));
    }

    void hearQt() {
        if (!QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability)) return;
        QObject::connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this,
                         [this] { stroke_.start(); });
    }

    QDBusConnection bus_;
    SystemListener& listener_;
    QTimer stroke_;
};

} // namespace

LoginSignals::LoginSignals(QDBusConnection bus) : bus_(std::move(bus)) {
}

std::unique_ptr<SystemSignals::Listening> LoginSignals::listen(SystemListener& listener) {
    return std::make_unique<BusListening>(bus_, listener);
}

} // namespace lumaro

#include "Platform/Linux/LoginSignals.moc"
