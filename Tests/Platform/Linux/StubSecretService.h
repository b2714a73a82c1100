// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include <cstdint>
#include <utility>

namespace lumaro {

/// A Secret Service in the test's own loop with a default collection that is shut and empty, and a person who answers
/// its prompts as the test says.
class StubSecretService final : public QDBusVirtualObject {
public:
    enum class Person : std::uint8_t { opens, dismisses, isAway };

    explicit StubSecretService(QDBusConnection bus) : bus_(std::move(bus)) {
        bus_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        bus_.registerService(QStringLiteral("org.freedesktop.secrets"));
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        return bus.send(answerTo(message));
    }

    Person person = Person::opens;
    int prompts = 0;
    int dismissals = 0; ///< prompts that the caller took back

private:
    static QDBusObjectPath objectPath(const char* path) { return QDBusObjectPath{QString::fromLatin1(path)}; }

    QDBusMessage answerTo(const QDBusMessage& message) {
        const auto method = message.member();
        const auto none = QVariant::fromValue(QList<QDBusObjectPath>{});
        if (method == QStringLiteral("OpenSession")) return session(message);
        if (method == QStringLiteral("SearchItems")) return message.createReply({none, none});
        if (method == QStringLiteral("ReadAlias"))
            return message.createReply(QVariant::fromValue(objectPath("/org/freedesktop/secrets/collection/one")));
        if (method == QStringLiteral("GetAll")) return message.createReply(properties());
        if (method == QStringLiteral("Unlock"))
            return message.createReply({none, QVariant::fromValue(objectPath("/prompt"))});
        if (method == QStringLiteral("Prompt")) return prompt(message);
        if (method == QStringLiteral("Dismiss")) return dismiss(message);
        return message.createErrorReply(QDBusError::UnknownMethod, method);
    }

    static QDBusMessage session(const QDBusMessage& message) {
        if (message.arguments().value(0).toString() != QStringLiteral("plain"))
            return message.createErrorReply(QDBusError::NotSupported, QStringLiteral("plain only"));
        const auto nothing = QVariant::fromValue(QDBusVariant{QString{}});
        return message.createReply({nothing, QVariant::fromValue(objectPath("/session"))});
    }

    QVariantMap properties() const {
        return {{QStringLiteral("Locked"), isShut_},
                {QStringLiteral("Label"), QStringLiteral("one")},
                {QStringLiteral("Items"), QVariant::fromValue(QList<QDBusObjectPath>{})}};
    }

    QDBusMessage prompt(const QDBusMessage& message) {
        ++prompts;
        if (person != Person::isAway) complete(person == Person::dismisses);
        return message.createReply();
    }

    QDBusMessage dismiss(const QDBusMessage& message) {
        ++dismissals;
        complete(true);
        return message.createReply();
    }

    void complete(bool wasDismissed) {
        isShut_ = isShut_ && wasDismissed;
        QList<QDBusObjectPath> opened;
        if (!wasDismissed) opened.push_back(objectPath("/org/freedesktop/secrets/collection/one"));
        auto signal = QDBusMessage::createSignal(
            QStringLiteral("/prompt"), QStringLiteral("org.freedesktop.Secret.Prompt"), QStringLiteral("Completed"));
        signal.setArguments({wasDismissed, QVariant::fromValue(QDBusVariant{QVariant::fromValue(opened)})});
        bus_.send(signal);
    }

    QDBusConnection bus_;
    bool isShut_ = true;
};

} // namespace lumaro
