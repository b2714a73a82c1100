// SPDX-License-Identifier: Apache-2.0
// What this computer knows of its user as files: the autostart entry, the contact card, the sounds, the downloads.
#include "Platform/Linux/AutostartEntry.h"
#include "Platform/Linux/DesktopSound.h"
#include "Platform/Linux/DownloadAttributes.h"
#include "Platform/Linux/UserContactCard.h"
#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Platform/Linux/HomeTest.h"

#include <sys/xattr.h>

#include <array>

namespace lumaro {
namespace {

using UserFilesTest = HomeTest;

// Not where the file system keeps no attributes.
bool keepOrigin(const std::string& file, const std::string& url) {
    return ::setxattr(file.c_str(), "user.xdg.origin.url", url.data(), url.size(), 0) == 0;
}

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

TEST_F(UserFilesTest, TheProgramAndItsNewestDownloadsSayWhereTheyCameFrom) {
    const auto download = [this](const std::string& name, const std::string& url, int age) {
        write(name, "x");
        std::filesystem::last_write_time(path(name),
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours{age});
        return keepOrigin(path(name), url);
    };
    DownloadAttributes origin{{.program = path("bin/lumaro"), .folder = path("downloads")}};
    EXPECT_TRUE(origin.origins().empty()) << "there is neither a program nor a folder";
    if (!download("bin/lumaro", "https://x/dl/program", 9)) GTEST_SKIP() << "no attributes on " << path("");
    ASSERT_TRUE(download("downloads/lumaro_1.deb", "https://x/dl/older", 2));
    ASSERT_TRUE(download("downloads/Lumaro (1).tar.gz", "https://x/dl/newer", 1));
    ASSERT_TRUE(download("downloads/lumaro_1 (2).deb", "https://x/dl/older", 3));
    ASSERT_TRUE(download("downloads/other.deb", "https://x/dl/other", 0));
    ASSERT_TRUE(download("downloads/lumaro-long", "https://x/" + std::string(DownloadOrigin::maxOriginLength, 'x'), 0));
    ASSERT_TRUE(download("downloads/lumaro/inside", "https://x/dl/inside", 0));
    std::filesystem::create_symlink(path("downloads/other.deb"), path("downloads/lumaro-link"));
    write("downloads/lumaro-written", "no attribute");
    const std::vector<std::string> known{"https://x/dl/program", "https://x/dl/newer", "https://x/dl/older"};
    EXPECT_EQ(origin.origins(), known);
    for (int i = 0; i < 20; ++i) ASSERT_TRUE(download("downloads/lumaro" + std::to_string(i), std::to_string(i), 0));
    EXPECT_EQ(origin.origins().size(), DownloadOrigin::maxOrigins);
}

} // namespace
} // namespace lumaro
