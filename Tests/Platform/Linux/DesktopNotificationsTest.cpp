// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/DesktopNotifications.h"

#include "Tests/Platform/Linux/PrivateBus.h"

#include <QDBusArgument>

#include <optional>

namespace lumaro {
namespace {

const auto daemonName = QStringLiteral("org.freedesktop.Notifications");

struct Shown {
    uint replaced = 0;
    QString title;
    QString body;
    QVariantMap hints;
    QStringList actions;
};

class DesktopNotificationsTest : public BusTest {
protected:
    QProcess& startDaemon(const QByteArray& capabilities) {
        return startMock(daemonName, QStringLiteral("notification_daemon"),
                         R"({"capabilities": ")" + capabilities + R"("})");
    }

    // What the daemon has been asked to show.
    std::vector<Shown> shown() const {
        const auto answer = call(daemonName, QStringLiteral("/org/freedesktop/Notifications"),
                                 QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("GetMethodCalls"),
                                 {QStringLiteral("Notify")});
        std::vector<Shown> all;
        const auto calls = answer.arguments().value(0).value<QDBusArgument>();
        for (calls.beginArray(); !calls.atEnd();) {
            qulonglong time = 0;
            QVariantList arguments;
            calls.beginStructure();
            calls >> time >> arguments;
            calls.endStructure();
            all.push_back({arguments.value(1).toUInt(), arguments.value(3).toString(), arguments.value(4).toString(),
                           qdbus_cast<QVariantMap>(arguments.value(6)), qdbus_cast<QStringList>(arguments.value(5))});
        }
        calls.endArray();
        return all;
    }
    std::vector<Shown> shownAfter(std::size_t count) {
        waitUntil([&] { return shown().size() >= count; });
        return shown();
    }

    static NotificationPermission answerTo(NotificationCenter& center) {
        std::optional<NotificationPermission> got;
        const auto question = center.askPermission([&](NotificationPermission permission) { got = permission; });
        EXPECT_EQ(got, std::nullopt);
        waitUntil([&] { return got.has_value(); });
        return *got;
    }

    // A signal of the daemon.
    void emitSignal(const QString& name, const QString& signature, const QVariantList& arguments) const {
        call(daemonName, QStringLiteral("/org/freedesktop/Notifications"), QStringLiteral("org.freedesktop.DBus.Mock"),
             QStringLiteral("EmitSignal"), {daemonName, name, signature, QVariant::fromValue(arguments)});
    }

    DesktopNotifications center_{bus()};
};

TEST_F(DesktopNotificationsTest, OneOfTheSameTakesThePlaceOfTheOtherAndIsAnswered) {
    using Kind = NotificationAnswer::Kind;
    startDaemon("body actions");
    std::vector<NotificationAnswer> answers;
    center_.onAnswer([&](const NotificationAnswer& answer) { answers.push_back(answer); });
    center_.post({"bo", "a photo", {}, "items"});
    center_.post({"over", "", {}, "block", {{"rest", "rest"}}});
    shownAfter(2);
    center_.post({"bo", "bo put up 2 things", {}, "items"});
    const auto shown = shownAfter(3);
    EXPECT_EQ(shown.at(0).replaced, 0U);
    EXPECT_EQ(shown.at(0).actions, (QStringList{"default", "open"}));
    EXPECT_EQ(shown.at(1).actions, (QStringList{"default", "open", "rest", "rest"}));
    EXPECT_EQ(shown.at(2).replaced, 1U);
    emitSignal(QStringLiteral("ActionInvoked"), QStringLiteral("us"), {1U, QStringLiteral("default")});
    emitSignal(QStringLiteral("ActionInvoked"), QStringLiteral("us"), {2U, QStringLiteral("rest")});
    emitSignal(QStringLiteral("ActionInvoked"), QStringLiteral("us"), {77U, QStringLiteral("default")});
    emitSignal(QStringLiteral("NotificationClosed"), QStringLiteral("uu"), {2U, 1U});
    emitSignal(QStringLiteral("NotificationClosed"), QStringLiteral("uu"), {2U, 2U});
    waitUntil([&] { return answers.size() >= 3; });
    EXPECT_EQ(answers, (std::vector<NotificationAnswer>{
                           {Kind::opened, "items"}, {Kind::acted, "block", "rest"}, {Kind::dismissed, "block"}}));
}

TEST_F(DesktopNotificationsTest, OffersNothingWhereTheDaemonHasNoActions) {
    startDaemon("body");
    center_.post({"over", "", {}, "block", {{"rest", "rest"}}});
    EXPECT_EQ(shownAfter(1).at(0).actions, QStringList{});
}

TEST_F(DesktopNotificationsTest, ShowsPictureAndTextWhichIsNoMarkupForADaemonThatReadsMarkup) {
    auto& daemon = startDaemon("body body-markup");
    center_.post({"a & b", "<b>1</b> & \"2\"", "/media/a b/ü#1.jpg"});
    center_.post({"mira", "later", std::nullopt});
    const auto shown = shownAfter(2);
    EXPECT_EQ(shown.at(0).title, QStringLiteral("a & b"));
    EXPECT_EQ(shown.at(0).body, QStringLiteral("&lt;b&gt;1&lt;/b&gt; &amp; &quot;2&quot;"));
    EXPECT_EQ(shown.at(0).hints.value(QStringLiteral("image-path")).toString(),
              QStringLiteral("file:///media/a%20b/%C3%BC%231.jpg"));
    EXPECT_FALSE(shown.at(1).hints.contains(QStringLiteral("image-path")));
    stop(daemon);
    startDaemon("body");
    center_.post({"", "<b>", std::nullopt});
    EXPECT_EQ(shownAfter(1).at(0).body, QStringLiteral("<b>"));
}

TEST_F(DesktopNotificationsTest, IsSilentWithoutADaemonAndWithoutABus) {
    DesktopNotifications nowhere{noBus()};
    for (auto* const center : {&center_, &nowhere}) {
        center->post({"a", "b", "/c"});
        EXPECT_EQ(answerTo(*center), NotificationPermission::denied);
    }
    startDaemon("body");
    EXPECT_EQ(answerTo(center_), NotificationPermission::authorized);
    EXPECT_TRUE(shown().empty());
}

TEST_F(DesktopNotificationsTest, ADroppedQuestionIsNotAnswered) {
    startDaemon("body");
    std::vector<int> answered;
    static_cast<void>(center_.permission([&](NotificationPermission) { answered.push_back(1); }));
    std::unique_ptr<NotificationCenter::Question> second;
    second = center_.permission([&](NotificationPermission) {
        second.reset();
        answered.push_back(2);
    });
    waitUntil([&] { return !answered.empty(); });
    EXPECT_EQ(answered, std::vector{2});
}

} // namespace
} // namespace lumaro
