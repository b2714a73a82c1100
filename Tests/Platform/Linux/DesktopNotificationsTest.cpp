// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/DesktopNotifications.h"

#include "Tests/Platform/Linux/PrivateBus.h"

#include <QDBusArgument>

#include <optional>

namespace lumaro {
namespace {

const auto daemonName = QStringLiteral("org.freedesktop.Notifications");

struct Shown {
    QString title;
    QString body;
    QVariantMap hints;
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
            all.push_back({arguments.value(3).toString(), arguments.value(4).toString(),
                           qdbus_cast<QVariantMap>(arguments.value(6))});
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

    DesktopNotifications center_{bus()};
};

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
