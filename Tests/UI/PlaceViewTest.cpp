// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/PlaceView.h"

#include "Data/Places/PlacesData.h"
#include "Lumaro/UI/Text.h"
#include "Tests/Model/AppFixture.h"

#include <QtTest/QAbstractItemModelTester>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace lumaro {
namespace {

constexpr Coordinates street{38.7139427, -9.1394113};

struct PlaceViewTest : testing::Test, AppFixture {
    void SetUp() override { goOnBoard(); }
    void shareFrom(Coordinates at) {
        place.share(true);
        positions.answer(at);
    }
    void type(const char* text) { place.choices()->setTyped(QString::fromUtf8(text)); }
    QString town(int row) const {
        const auto& choices = *const_cast<PlaceView&>(place).choices();
        QStringList said;
        for (const auto role : {PlaceChoices::Role::name, PlaceChoices::Role::country}) {
            said.append(choices.data(choices.index(row), static_cast<int>(role)).toString());
        }
        return said.join(QStringLiteral(", "));
    }

    PlaceTable towns = PlaceTable::open(placesData()).value();
    BoardScene scene{{*app, clock, sleeper, background}};
    PlaceView place{{*app, scene, towns}};
};

TEST_F(PlaceViewTest, EachStateSaysWhatIsInTheWayAndOffersAWay) {
    EXPECT_EQ(place.offer(), "let it see where you are");
    EXPECT_EQ(place.hurdle(), "");
    place.share(true);
    EXPECT_TRUE(place.hurdle().startsWith("waiting for a fix · since ")) << place.hurdle().toStdString();
    EXPECT_EQ(place.offer(), "where you are");
    for (const auto access : {LocationAccess::denied, LocationAccess::restricted}) {
        positions.answer({access, std::nullopt});
        EXPECT_TRUE(place.isOff());
        EXPECT_EQ(place.offer(), "location is off · fix");
        EXPECT_EQ(place.hurdle() == "location is off for this app", access == LocationAccess::denied);
        EXPECT_TRUE(place.help().contains("“i'm\u00a0in\u00a0…”"));
        place.lookAgain();
        pass(Seconds{3});
        EXPECT_TRUE(place.isOff()) << "while it looks again";
    }
    positions.answer(street);
    EXPECT_FALSE(place.isOff());
    EXPECT_EQ(place.hurdle() + place.help(), "");
    place.share(false);
    EXPECT_EQ(place.offer(), "let it see where you are");
    EXPECT_FALSE(place.told().isThere);
}

TEST_F(PlaceViewTest, ThePreviewIsWhatTheRoomIsToldAndHasNoFinerDigit) {
    shareFrom(street);
    const auto& here = *state().ownPresence.here;
    EXPECT_EQ(place.told().label, qText(here.label));
    EXPECT_EQ(place.told().position, "38.71, -9.14");
    EXPECT_EQ(place.told().position, QStringLiteral("%1, %2").arg(here.lat, 0, 'f', 2).arg(here.lon, 0, 'f', 2));
    EXPECT_TRUE(place.told().clock.endsWith(qText(here.tz)));
    EXPECT_EQ(place.told().weather, "") << "it has not come yet";
    place.setPrecision("block");
    positions.answer(street);
    EXPECT_EQ(place.told().position, "38.714, -9.139");
    place.setPrecision("address");
    EXPECT_EQ(place.precision(), "block");
    place.rename("home");
    EXPECT_EQ(here.label, "home");
    EXPECT_EQ(place.told().town, "Lisboa") << "it travels beside the name";
    EXPECT_EQ(place.ownName(), "home");
    place.rename("");
    EXPECT_EQ(place.ownName(), "");
    EXPECT_EQ(place.told().label, "lisboa");
}

TEST_F(PlaceViewTest, ATownIsFoundByTypingAndChosen) {
    const QAbstractItemModelTester tester{place.choices(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    for (const char* const typed : {"l", "li", "lisb", "", "a", "zzzz", "lisb"}) type(typed);
    EXPECT_EQ(town(0), "lisbon, portugal");
    EXPECT_FALSE(place.choices()->isNothingFound());
    place.share(true);
    place.choose(99);
    EXPECT_FALSE(place.isByHand());
    place.choose(0);
    EXPECT_EQ(place.chosen(), "lisbon, portugal");
    EXPECT_EQ(place.zoneNote(), "your clock stays on Europe/Berlin");
    EXPECT_EQ(state().ownPresence.here->city, "Lisbon");
    zone.zone = "Europe/Lisbon";
    pass(Seconds{300});
    EXPECT_EQ(place.zoneNote(), "");
    place.findForMe();
    EXPECT_FALSE(place.isByHand());
    EXPECT_EQ(positions.open(), 1U);
    type("zzzz");
    EXPECT_TRUE(place.choices()->isNothingFound());
    type("san");
    EXPECT_EQ(place.choices()->rowCount(), static_cast<int>(PlaceChoices::most));
}

TEST_F(PlaceViewTest, CountriesHaveNamesAndUnknownOnesTheirCode) {
    EXPECT_EQ(countryName("PT"), "portugal");
    EXPECT_EQ(countryName("CZ"), "czechia");
    EXPECT_EQ(countryName("??"), "??");
}

} // namespace
} // namespace lumaro
