// SPDX-License-Identifier: Apache-2.0
// What this computer knows of its user as files: the autostart entry, the contact card, the sounds.
#include "Platform/Linux/AutostartEntry.h"
#include "Platform/Linux/DesktopSound.h"
#include "Platform/Linux/UserContactCard.h"
#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Platform/Linux/HomeTest.h"

#include <array>

namespace lumaro {
namespace {

using UserFilesTest = HomeTest;

TEST_F(UserFilesTest, TheDesktopStartsTheProgramWithItsArgumentsAsTheyAre) {
    const std::vector<std::string> arguments{"--profile", "/a b/\"c\"", "$HOME `x` \\ \\\\ 'y'", "100%", "%u", ""};
    std::vector<std::string> command{writeProgram("lumaro at home", "heard")};
    command.insert(command.end(), arguments.begin(), arguments.end());
    AutostartEntry entry{files_, path("autostart"), {"app.lumaro.Lumaro", "Lumaro", command}};
    ASSERT_TRUE(entry.enable());
    // A desktop's own reading of the entry.
    const auto file = QString::fromStdString(path("autostart/app.lumaro.Lumaro.desktop"));
    EXPECT_EQ(QProcess::execute(QStringLiteral("gio"), {QStringLiteral("launch"), file}), 0);
    std::string expected;
    for (const auto& argument : arguments) expected += argument + "\n";
    EXPECT_EQ(heard("heard"), expected);
}

TEST_F(UserFilesTest, TheEntryIsOffWhenItIsRemovedAndWhenPeopleSwitchedItOff) {
    AutostartEntry entry{files_, path("autostart"), {"lumaro", "Lumaro", {"/usr/bin/lumaro"}}};
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_TRUE(entry.disable());
    for (const auto* off : {"Hidden=true", "X-GNOME-Autostart-enabled=false"}) {
        ASSERT_TRUE(entry.enable());
        EXPECT_TRUE(entry.isEnabled());
        write("autostart/lumaro.desktop", read("autostart/lumaro.desktop") + off + "\n");
        EXPECT_FALSE(entry.isEnabled()) << off;
    }
    ASSERT_TRUE(entry.enable());
    EXPECT_TRUE(entry.isEnabled());
    EXPECT_TRUE(entry.disable());
    EXPECT_FALSE(entry.isEnabled());
    MemoryFileSystem broken;
    broken.fault = [](auto) { return FileFault::noSpace; };
    AutostartEntry failing{broken, path("autostart"), {"lumaro", "Lumaro", {"/usr/bin/lumaro"}}};
    EXPECT_FALSE(failing.enable());
    EXPECT_FALSE(failing.disable());
}

TEST_F(UserFilesTest, ThePersonHasANameAndTheFaceOfTheLoginScreen) {
    const std::vector<std::array<std::string, 3>> names{{"mira", "Mira Sand,room 4,,", "Mira Sand"},
                                                        {"mira", "& Sand", "Mira Sand"},
                                                        {"mira", "", ""},
                                                        {"", "&,,", ""},
                                                        {"mira", " Žofie ", "Žofie"}};
    for (const auto& [login, gecos, name] : names) {
        EXPECT_EQ((UserContactCard{{login, gecos, path("home")}}.ownCard()), (OwnCard{name, std::nullopt})) << gecos;
    }
    write("home/.face", "picture");
    EXPECT_EQ((UserContactCard{{"", "", path("home")}}.ownCard().picturePath), path("home/.face"));
    EXPECT_EQ(UserContactCard::ownAccount().home + "/", path(""));
}

TEST_F(UserFilesTest, AnInstalledPlayerPlaysTheSoundOfTheFirstThemeThatHasIt) {
    const std::string sound = "/sounds/freedesktop/stereo/complete.oga";
    write("system" + sound, "x");
    writeProgram("bin/paplay", "played");
    DesktopSound sounds{{.data = {path("home"), path("system")}, .programs = {path("none"), path("bin")}}};
    sounds.play("Frog");
    sounds.play("Glass");
    EXPECT_EQ(heard("played"), path("system" + sound) + "\n");
    DesktopSound{{.data = {path("home")}, .programs = {path("none")}}}.play("Glass");
    DesktopSound{{.data = {}, .programs = {path("bin")}}}.play("Glass");
}

} // namespace
} // namespace lumaro
