// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Platform/Linux/PrivateBus.h"

#include <QDBusObjectPath>

namespace lumaro {

/// A test with a real keyring of its own, once it starts one.
class KeyringTest : public BusTest {
protected:
    static constexpr auto collection = "/org/freedesktop/secrets/collection/login";

    /// Starts the daemon with its keyring open, a new one or the one that was left behind.
    void startKeyring() { startDaemon({QStringLiteral("--unlock")}); }
    /// Starts the daemon as a desktop without a password does: it makes no keyring, and opens none.
    void startDaemonAlone() { startDaemon({}); }
    void stopKeyring() { stop(*keyring_); }
    void lockKeyring() {
        const QList<QDBusObjectPath> paths{QDBusObjectPath{QString::fromLatin1(collection)}};
        call(QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
             QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("Lock"), {QVariant::fromValue(paths)});
    }

private:
    void startDaemon(QStringList arguments) {
        arguments << QStringLiteral("--foreground") << QStringLiteral("--components=secrets");
        keyring_ = &startService(QStringLiteral("org.freedesktop.secrets"), QStringLiteral("gnome-keyring-daemon"),
                                 arguments, "the password");
    }

    QProcess* keyring_ = nullptr;
};

} // namespace lumaro
