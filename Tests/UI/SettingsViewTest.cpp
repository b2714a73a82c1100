// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/SettingsView.h"

#include "Tests/Fakes/FakeDesktop.h"
#include "Tests/Fakes/MemoryDefaults.h"

#include <QtCore/QLocale>
#include <gtest/gtest.h>

namespace lumaro {
namespace {

TEST(SettingsViewTest, TheAppearanceIsReadFromItsFormerKeyUntilItIsSetAnew) {
    MemoryDefaults defaults;
    FakeLoginItem loginItem;
    SettingsView settings{defaults, loginItem};
    EXPECT_EQ(settings.appearance(), QStringLiteral("follow"));
    defaults.setString("surroundings", "dark");
    EXPECT_EQ(settings.appearance(), QStringLiteral("dark"));
    settings.setAppearance(QStringLiteral("light"));
    EXPECT_EQ(SettingsView(defaults, loginItem).appearance(), QStringLiteral("light"));
}

TEST(SettingsViewTest, TemperaturesAreReadAsTheSystemDoesUntilTheyAreSetAndWeatherStandsStill) {
    MemoryDefaults defaults;
    FakeLoginItem loginItem;
    SettingsView settings{defaults, loginItem};
    for (const char* const kept : {"", "kelvin", "follow"}) {
        defaults.setString("temperatureUnit", kept);
        EXPECT_EQ(settings.temperatureUnit(), QStringLiteral("follow")) << kept;
        EXPECT_EQ(settings.isFahrenheit(), QLocale::system().measurementSystem() == QLocale::ImperialUSSystem);
    }
    settings.setTemperatureUnit(QStringLiteral("fahrenheit"));
    EXPECT_TRUE(SettingsView(defaults, loginItem).isFahrenheit());
    settings.setTemperatureUnit(QStringLiteral("celsius"));
    EXPECT_FALSE(settings.isFahrenheit());
    EXPECT_FALSE(settings.weatherMoves());
    settings.setWeatherMoves(true);
    EXPECT_TRUE(SettingsView(defaults, loginItem).weatherMoves());
}

} // namespace
} // namespace lumaro
