// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/GeoCluePosition.h"
#include "Platform/Linux/PortalPosition.h"
#include "Platform/Linux/Sandbox.h"
#include "Tests/Platform/Linux/PrivateBus.h"
#include "Tests/Platform/Linux/StandInLocation.h"

#include <QDBusObjectPath>

#include <fstream>
#include <limits>
#include <sstream>

namespace lumaro {
namespace {

constexpr auto neighbourhood = HerePrecision::neighbourhood;
constexpr auto block = HerePrecision::block;
const auto accessDenied = QStringLiteral("org.freedesktop.DBus.Error.AccessDenied");
const auto notAllowed = QStringLiteral("org.freedesktop.portal.Error.NotAllowed");
const auto failed = QStringLiteral("org.freedesktop.DBus.Error.Failed");

std::string written(const PositionSource::Answer& answer) {
    std::ostringstream text;
    text << namesOf(answer.access).at(std::to_underlying(answer.access));
    if (answer.position) text << ' ' << answer.position->latitude << ' ' << answer.position->longitude;
    return text.str();
}

/// One search, and what came of it.
struct Asked {
    std::unique_ptr<PositionSource::Search> search;
    std::vector<std::string> answers;
};

class PositionTest : public BusTest {
protected:
    static std::unique_ptr<Asked> ask(PositionSource& source, HerePrecision precision = neighbourhood) {
        auto asked = std::make_unique<Asked>();
        asked->search = source.search(precision, [&asked = *asked](PositionSource::Answer answer) {
            asked.answers.push_back(written(answer));
            asked.search.reset();
        });
        EXPECT_TRUE(asked->answers.empty());
        return asked;
    }
    static std::string answerTo(Asked& asked) {
        waitUntil([&] { return !asked.answers.empty(); });
        settle();
        EXPECT_EQ(asked.answers.size(), 1U);
        return asked.answers.front();
    }
    static std::string answerOf(PositionSource& source) { return answerTo(*ask(source)); }

    static void waitForCall(const StandInLocation& service, const QString& call, int count = 1) {
        waitUntil([&] { return service.calls.count(call) >= count; });
    }
    /// What was under way until now has been heard.
    void catchUp() const {
        static_cast<void>(matchRules());
        settle();
    }

    static constexpr std::chrono::milliseconds moment{50};
    static constexpr PositionLimits shortLimits{.service = moment, .person = moment, .pause = moment};
};

// A source with its service, for what holds for both ways to the position.
struct Way {
    const char* name;
    std::unique_ptr<StandInLocation> (*start)();
    std::unique_ptr<PositionSource> (*source)(const QDBusConnection& bus, PositionLimits limits);
    std::vector<const char*> steps;  ///< the methods that are called until the position can come, in their order
    std::vector<const char*> giving; ///< those that give back what was made, when the last step has been taken
    const char* made;                ///< the method that makes it
};

void PrintTo(const Way& way, std::ostream* out) {
    *out << way.name;
}

const Way geoClueWay{"GeoClue",
                     [] { return std::unique_ptr<StandInLocation>{std::make_unique<StandInGeoClue>()}; },
                     [](const QDBusConnection& bus, PositionLimits limits) {
                         return std::unique_ptr<PositionSource>{std::make_unique<GeoCluePosition>(bus, limits)};
                     },
                     {"Get", "CreateClient", "Start"},
                     {"Stop", "DeleteClient"},
                     "CreateClient"};

const Way portalWay{"Portal",
                    [] { return std::unique_ptr<StandInLocation>{std::make_unique<StandInPortal>()}; },
                    [](const QDBusConnection& bus, PositionLimits limits) {
                        return std::unique_ptr<PositionSource>{std::make_unique<PortalPosition>(bus, limits)};
                    },
                    {"Get", "CreateSession", "Start"},
                    {"Close"},
                    "CreateSession"};

class EachPositionTest : public PositionTest, public testing::WithParamInterface<Way> {
protected:
    std::unique_ptr<PositionSource> newSource(PositionLimits limits = {}) const {
        return GetParam().source(bus(), limits);
    }
    static void waitForStart(const StandInLocation& service, int count = 1) {
        waitForCall(service, QStringLiteral("Start"), count);
        settle();
    }
    void expectNothingLeft(const StandInLocation& service) const {
        waitUntil([&] { return service.open.empty(); });
        catchUp();
        EXPECT_EQ(matchRules(), rulesAtFirst_);
    }

    QStringList rulesAtFirst_ = matchRules();
    std::unique_ptr<StandInLocation> service_ = GetParam().start();
    std::unique_ptr<PositionSource> source_ = newSource();
};

INSTANTIATE_TEST_SUITE_P(Ways, EachPositionTest, testing::Values(geoClueWay, portalWay),
                         [](const auto& way) { return std::string{way.param.name}; });

TEST_P(EachPositionTest, TheAnswerIsAPositionOnEarthAndNoRubbishBeforeIt) {
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    const QVariant text{QStringLiteral("52.5")};
    const std::vector<std::pair<QVariant, QVariant>> rubbish{{std::numeric_limits<double>::quiet_NaN(), 13.4},
                                                             {52.5, infinity},
                                                             {-infinity, 13.4},
                                                             {90.0001, 13.4},
                                                             {52.5, -180.0001},
                                                             {text, 13.4},
                                                             {52, 13},
                                                             {52.5, QVariantMap{}}};
    const std::vector<std::pair<double, double>> places{{52.5, 13.4}, {1.5, 179.9999}, {1.5, -179.9999},
                                                        {90, 0},      {-90, -180},     {0, 0}};
    int starts = 0;
    for (const auto& [latitude, longitude] : places) {
        const auto asked = ask(*source_);
        waitForStart(*service_, ++starts);
        for (const auto& [wrongLatitude, wrongLongitude] : rubbish) service_->locate(wrongLatitude, wrongLongitude);
        service_->locate({{QStringLiteral("Latitude"), 52.5}});
        service_->locate(QVariantMap{});
        catchUp();
        EXPECT_TRUE(asked->answers.empty());
        service_->locate(latitude, longitude);
        EXPECT_EQ(answerTo(*asked), written({LocationAccess::authorized, Coordinates{latitude, longitude}}));
        service_->locate(7.0, 7.0);
        expectNothingLeft(*service_);
        EXPECT_EQ(asked->answers.size(), 1U);
    }
}

TEST_P(EachPositionTest, APositionThatNeverComesIsNoAnswer) {
    const auto asked = ask(*source_);
    waitForStart(*service_);
    catchUp();
    EXPECT_TRUE(asked->answers.empty());
    EXPECT_EQ(service_->open.size(), 1U);
    asked->search.reset();
    expectNothingLeft(*service_);
}

TEST_P(EachPositionTest, DroppedAtAnyStepItGivesBackOnceWhatWasMade) {
    for (const auto* step : GetParam().steps) {
        SCOPED_TRACE(step);
        service_->calls.clear();
        service_->held = QString::fromLatin1(step);
        const auto asked = ask(*source_);
        waitUntil([&] { return !service_->calls.empty() && service_->calls.back().startsWith(service_->held); });
        asked->search.reset();
        service_->release();
        expectNothingLeft(*service_);
        EXPECT_TRUE(asked->answers.empty());
        const bool wasMade = !service_->calls.filter(QString::fromLatin1(GetParam().made)).isEmpty();
        const auto last = QString::fromLatin1(GetParam().giving.back());
        // The portal's "Close" is also that of the question to the person.
        const bool asksPerson = last == QStringLiteral("Close") && QString::fromLatin1(step) == QStringLiteral("Start");
        EXPECT_EQ(service_->calls.count(last), wasMade ? 1 + (asksPerson ? 1 : 0) : 0);
    }
}

TEST_P(EachPositionTest, TwoSearchesAtOnceDoNotShareWhatTheyEnd) {
    const auto one = ask(*source_);
    const auto two = ask(*source_, block);
    const auto three = ask(*source_);
    waitForStart(*service_, 3);
    EXPECT_EQ(service_->open.size(), 3U);
    one->search.reset();
    waitUntil([&] { return service_->open.size() == 2; });
    service_->locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*two), "authorized 52.5 13.4");
    EXPECT_EQ(answerTo(*three), "authorized 52.5 13.4");
    EXPECT_TRUE(one->answers.empty());
    expectNothingLeft(*service_);
}

TEST_P(EachPositionTest, AServiceThatLeavesIsAskedAgainWhenItIsBackAndThreeTimesAtMost) {
    const auto alone = ask(*source_);
    waitForStart(*service_);
    service_.reset();
    EXPECT_EQ(answerTo(*alone), "restricted");

    // The next in line for the name takes it at once, as one that the bus starts.
    std::vector<std::unique_ptr<StandInLocation>> runs;
    const auto startRuns = [&](int count) {
        while (std::ssize(runs) < count) runs.push_back(GetParam().start());
    };
    const auto leave = [&] {
        waitForStart(*runs.front());
        runs.erase(runs.begin());
    };
    startRuns(2);
    const auto updated = ask(*source_);
    leave();
    waitForStart(*runs.front());
    runs.front()->locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*updated), "authorized 52.5 13.4");
    expectNothingLeft(*runs.front());

    runs.clear();
    startRuns(4);
    const auto crashing = ask(*source_);
    for (int run = 0; run < 3; ++run) leave();
    EXPECT_EQ(answerTo(*crashing), "restricted");
    EXPECT_TRUE(runs.front()->calls.empty());
    EXPECT_EQ(matchRules(), rulesAtFirst_);
}

TEST_P(EachPositionTest, LeavingInTheMiddleOfAnAnswerIsLeaving) {
    const auto next = GetParam().start();
    service_->held = QString::fromLatin1(GetParam().made);
    const auto asked = ask(*source_);
    waitUntil([&] { return service_->calls.size() == 2; });
    service_.reset();
    waitForStart(*next);
    next->locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*asked), "authorized 52.5 13.4");
    expectNothingLeft(*next);
}

TEST_P(EachPositionTest, AnAnswerOfTheWrongTypeOrNoneInTimeIsRestricted) {
    const auto impatient = newSource(shortLimits);
    for (const auto* method : {GetParam().steps[0], GetParam().made}) {
        SCOPED_TRACE(method);
        const auto name = QString::fromLatin1(method);
        service_->nonsense = {{name, QStringLiteral("/org")}};
        EXPECT_EQ(answerOf(*source_), "restricted");
        service_->nonsense.clear();
        service_->held = name;
        EXPECT_EQ(answerOf(*impatient), "restricted");
        service_->held.clear();
        service_->refusals = {{name, failed}};
        EXPECT_EQ(answerOf(*source_), "restricted");
        service_->refusals.clear();
    }
}

TEST_P(EachPositionTest, WithoutAServiceOrABusItIsRestricted) {
    service_.reset();
    EXPECT_EQ(answerOf(*source_), "restricted");
    EXPECT_EQ(answerOf(*GetParam().source(noBus(), {})), "restricted");
    const auto dropped = ask(*source_);
    dropped->search.reset();
    catchUp();
    EXPECT_TRUE(dropped->answers.empty());
    EXPECT_EQ(matchRules(), rulesAtFirst_);
}

class GeoCluePositionTest : public PositionTest {
protected:
    StandInGeoClue service_;
    GeoCluePosition source_{bus()};
};

TEST_F(GeoCluePositionTest, SaysWhoItIsAsksForNoMoreThanItNeedsAndLetsTheClientGo) {
    const auto asked = ask(source_);
    waitForCall(service_, QStringLiteral("Start"));
    service_.locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*asked), "authorized 52.5 13.4");
    waitForCall(service_, QStringLiteral("DeleteClient"));
    EXPECT_EQ(service_.calls.join(u',').toStdString(),
              "Get AvailableAccuracyLevel,CreateClient,Set DesktopId lumaro,Set RequestedAccuracyLevel 5,Start,GetAll,"
              "Stop,DeleteClient");
    const auto exact = ask(source_, block);
    waitForCall(service_, QStringLiteral("Set RequestedAccuracyLevel 6"));
}

TEST_F(GeoCluePositionTest, ANoIsDeniedAndASystemThatDoesNotOfferItIsRestricted) {
    struct Row {
        QString method, error;
        QVariant level;
        std::string answer;
    };
    const auto start = QStringLiteral("Start");
    const std::vector<Row> rows{{start, accessDenied, 8U, "denied"},
                                {start, failed, 8U, "restricted"},
                                {QStringLiteral("CreateClient"), accessDenied, 8U, "denied"},
                                {QStringLiteral("-"), {}, 0U, "restricted"}};
    for (const auto& row : rows) {
        service_.refusals = {{row.method, row.error}};
        service_.level = row.level;
        EXPECT_EQ(answerOf(source_), row.answer) << row.method.toStdString();
    }
    service_.refusals.clear();
    // A level that is no number says nothing.
    service_.level = QStringLiteral("0");
    const auto asked = ask(source_);
    waitForCall(service_, start, 3);
    settle();
    service_.locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*asked), "authorized 52.5 13.4");
    waitUntil([&] { return service_.open.empty(); });
    EXPECT_TRUE(service_.active.empty());
}

TEST_F(GeoCluePositionTest, AClientThatComesTooLateIsGivenBack) {
    GeoCluePosition impatient{bus(), {.service = moment}};
    service_.held = QStringLiteral("CreateClient");
    EXPECT_EQ(answerOf(impatient), "restricted");
    service_.release();
    waitForCall(service_, QStringLiteral("DeleteClient"));
    EXPECT_TRUE(service_.open.empty());
}

TEST_F(GeoCluePositionTest, APersonMayTakeLongerThanTheCallLasts) {
    GeoCluePosition impatient{bus(), shortLimits};
    service_.held = QStringLiteral("Start");
    const auto asked = ask(impatient);
    waitForCall(service_, service_.held);
    bool isLate = false;
    QTimer::singleShot(shortLimits.person * 2, [&] { isLate = true; });
    waitUntil([&] { return isLate; });
    EXPECT_TRUE(asked->answers.empty());
    service_.release();
    service_.locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*asked), "authorized 52.5 13.4");
}

TEST_F(GeoCluePositionTest, HearsNobodyElseAndReadsOneLocationAtATime) {
    const auto asked = ask(source_);
    waitForCall(service_, QStringLiteral("Start"));
    settle();
    // Of the same words from another connection, to all and to us alone; and one that leads nowhere.
    for (const auto& to : {QString{}, bus().baseService()}) {
        const auto path = service_.active.front();
        const auto interface = QStringLiteral("org.freedesktop.GeoClue2.Client");
        const auto member = QStringLiteral("LocationUpdated");
        auto forged = to.isEmpty() ? QDBusMessage::createSignal(path, interface, member)
                                   : QDBusMessage::createTargetedSignal(to, path, interface, member);
        forged << QVariant::fromValue(QDBusObjectPath{QStringLiteral("/")})
               << QVariant::fromValue(QDBusObjectPath{QStringLiteral("/forged")});
        EXPECT_TRUE(bus().send(forged));
    }
    catchUp();
    EXPECT_EQ(service_.calls.count(QStringLiteral("GetAll")), 0);
    service_.held = QStringLiteral("GetAll");
    for (int i = 0; i < 100; ++i) service_.locate(i == 0 ? 91.0 : 40.0, static_cast<double>(i));
    waitForCall(service_, service_.held);
    catchUp();
    service_.release();
    EXPECT_EQ(answerTo(*asked), "authorized 40 99");
    EXPECT_EQ(service_.calls.count(QStringLiteral("GetAll")), 2);

    service_.held = QStringLiteral("GetAll");
    const auto dropped = ask(source_);
    waitForCall(service_, QStringLiteral("Start"), 2);
    settle();
    service_.locate(40.0, 1.0);
    waitForCall(service_, service_.held, 3);
    dropped->search.reset();
    service_.release();
    waitUntil([&] { return service_.open.empty(); });
    EXPECT_TRUE(service_.active.empty());
    EXPECT_TRUE(dropped->answers.empty());
}

class PortalPositionTest : public PositionTest {
protected:
    StandInPortal service_;
    PortalPosition source_{bus()};
};

TEST_F(PortalPositionTest, AsksForNoMoreThanItNeedsAndClosesTheSession) {
    const auto asked = ask(source_);
    waitForCall(service_, QStringLiteral("Start"));
    service_.locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*asked), "authorized 52.5 13.4");
    waitForCall(service_, QStringLiteral("Close"));
    EXPECT_EQ(service_.calls.join(u',').toStdString(), "Get version,CreateSession 3,Start,Close");
    const auto exact = ask(source_, block);
    waitForCall(service_, QStringLiteral("CreateSession 4"));
}

TEST_F(PortalPositionTest, ANoIsDeniedALockdownRestrictedAndAnythingElseLeavesItOpen) {
    service_.response = 1;
    EXPECT_EQ(answerOf(source_), "denied");
    service_.response = 0;
    for (const auto* method : {"CreateSession", "Start"}) {
        service_.refusals = {{QString::fromLatin1(method), notAllowed}};
        EXPECT_EQ(answerOf(source_), "restricted");
    }
    service_.refusals.clear();
    waitUntil([&] { return service_.open.empty(); });
    service_.calls.clear();
    const auto close = QStringLiteral("Close");
    service_.response = 2;
    const auto failing = ask(source_);
    waitForCall(service_, close);
    service_.response = -1;
    const auto unanswered = ask(source_);
    waitForCall(service_, QStringLiteral("Start"), 2);
    catchUp();
    EXPECT_TRUE(failing->answers.empty() && unanswered->answers.empty());
    failing->search.reset();
    unanswered->search.reset();
    waitUntil([&] { return service_.open.empty(); });
    // The question to the person, while it is open, is taken back as well.
    EXPECT_EQ(service_.calls.count(close), 3);
}

TEST_F(PortalPositionTest, AfterAFaultOrASessionThatEndsItAsksAgainInAWhile) {
    PortalPosition patient{bus(), {.service = PositionLimits{}.service, .person = {}, .pause = moment}};
    service_.response = 2;
    const auto asked = ask(patient);
    const auto start = QStringLiteral("Start");
    // More often than a service may leave.
    waitForCall(service_, start, RepeatedSearch::maxTries + 2);
    service_.response = 0;
    waitUntil([&] { return service_.hasStarted(); });
    service_.endSession();
    waitUntil([&] { return !service_.hasStarted(); });
    waitUntil([&] { return service_.hasStarted(); });
    settle();
    EXPECT_TRUE(asked->answers.empty());
    EXPECT_EQ(service_.open.size(), 1U);
    service_.locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*asked), "authorized 52.5 13.4");
}

TEST_F(PortalPositionTest, HearsOfItsOwnSessionFromThePortalAlone) {
    const StandInPortal stranger;
    const auto asked = ask(source_);
    waitForCall(service_, QStringLiteral("Start"));
    settle();
    const QVariantMap elsewhere{{QStringLiteral("Latitude"), 1.0}, {QStringLiteral("Longitude"), 2.0}};
    const auto session = service_.open.begin()->first;
    stranger.update(bus().baseService(), session, elsewhere);
    service_.update(bus().baseService(), session + u'x', elsewhere);
    catchUp();
    EXPECT_TRUE(asked->answers.empty());
    service_.locate(52.5, 13.4);
    EXPECT_EQ(answerTo(*asked), "authorized 52.5 13.4");
}

TEST_F(BusTest, ASandboxIsKnownByFlatpaksFileOrByTheSnapThatTheProgramLiesIn) {
    std::ofstream{path("info")} << "[Application]\n";
    EXPECT_TRUE(isInSandbox({.flatpakInfo = path("info"), .snap = "", .program = "/usr/bin/lumaro"}));
    EXPECT_TRUE(
        isInSandbox({.flatpakInfo = path("none"), .snap = "/snap/lumaro/7", .program = "/snap/lumaro/7/lumaro"}));
    // Started from a terminal that is a snap.
    EXPECT_FALSE(isInSandbox({.flatpakInfo = path("none"), .snap = "/snap/term/1", .program = "/usr/bin/lumaro"}));
    EXPECT_FALSE(isInSandbox({.flatpakInfo = path("none"), .snap = "", .program = "/usr/bin/lumaro"}));
    EXPECT_FALSE(isInSandbox(SandboxSigns::here()));
}

} // namespace
} // namespace lumaro
