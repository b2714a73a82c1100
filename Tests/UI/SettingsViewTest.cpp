// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/SettingsView.h"

#include "Tests/Fakes/FakeDesktop.h"
#include "Tests/Fakes/MemoryDefaults.h"

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

} // namespace
} // namespace lumaro
