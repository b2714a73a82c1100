// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/UrlScheme.h"

#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Platform/Linux/HomeTest.h"

namespace lumaro {
namespace {

class UrlSchemeTest : public HomeTest {
protected:
    void claim() { EXPECT_TRUE(scheme_.claim()); }

    // What a desktop does when somebody clicks a link.
    static void open(const std::string& link) {
        EXPECT_EQ(QProcess::execute(QStringLiteral("gio"), {QStringLiteral("open"), QString::fromStdString(link)}), 0);
    }

    // The test's own bus has the folder itself for both.
    UrlScheme scheme_{files_, {path("."), path("."), {path("usr")}}, {path("lu maro"), "--profile", "100%"}};
};

TEST_F(UrlSchemeTest, ADesktopOpensALinkWithThisProgram) {
    writeProgram("lu maro", "heard");
    claim();
    open("lumaro://join-invite?i=abcd_efgh-1234");
    EXPECT_EQ(heard("heard"), "--profile\n100%\nlumaro://join-invite?i=abcd_efgh-1234\n");
}

TEST_F(UrlSchemeTest, WhatElseAPersonOpensWithWhatStaysAsItIs) {
    const std::string line = "x-scheme-handler/lumaro=lumaro-url.desktop;\n";
    const std::string other = "x-scheme-handler/lumaro=other.desktop\n";
    const std::vector<std::pair<std::string, std::string>> lists{
        {"", "[Default Applications]\n" + line},
        {"[Added Associations]\n" + other + "a=b",
         "[Added Associations]\n" + other + "a=b\n[Default Applications]\n" + line},
        {"# mine\n[Default Applications]\ntext/html=x.desktop\n\n[Removed Associations]\nc=d\n",
         "# mine\n[Default Applications]\n" + line + "text/html=x.desktop\n\n[Removed Associations]\nc=d\n"},
        {"[Default Applications]", "[Default Applications]\n" + line},
        {"[Default Applications]\nx-scheme-handler/lumaro-old=y\n" + other,
         "[Default Applications]\nx-scheme-handler/lumaro-old=y\n" + other}};
    for (const auto& [before, after] : lists) {
        write("mimeapps.list", before);
        claim();
        EXPECT_EQ(read("mimeapps.list"), after);
        claim();
        EXPECT_EQ(read("mimeapps.list"), after) << "a second start";
    }
}

TEST_F(UrlSchemeTest, AnInstalledEntryHasTheLinks) {
    write("usr/applications/lumaro.desktop", "[Desktop Entry]\nMimeType=x-scheme-handler/lumaro;\n");
    claim();
    EXPECT_FALSE(std::filesystem::exists(path("mimeapps.list")));
    EXPECT_FALSE(std::filesystem::exists(path("applications")));
}

TEST_F(UrlSchemeTest, AListThatCannotBeReadIsNotWrittenOver) {
    MemoryFileSystem disk;
    ASSERT_TRUE(disk.createDirectories("/config") && disk.writeFile("/config/mimeapps.list", "mine"));
    disk.fault = [](auto call) { return call == "readFile" ? std::optional{FileFault::inOut} : std::nullopt; };
    EXPECT_FALSE((UrlScheme{disk, {"/config", "/data", {}}, {"/lumaro"}}.claim()));
    disk.fault = nullptr;
    EXPECT_EQ(disk.readFile("/config/mimeapps.list"), "mine");
}

} // namespace
} // namespace lumaro
