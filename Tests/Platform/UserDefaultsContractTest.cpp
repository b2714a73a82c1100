// SPDX-License-Identifier: Apache-2.0
// What every UserDefaults promises, held by the settings file and by those in memory.
#include "Platform/Qt/SettingsFile.h"
#include "Tests/Fakes/MemoryDefaults.h"
#include "Tests/Fakes/RecordingLog.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace lumaro {
namespace {

const std::vector<std::string> texts{"",     "Mira",     "a b; c=d, \"e\"", "@invalid", "ü 🌻",
                                     "true", "%41\\x41", "two\nlines",      " spaces ", "[general]"};

class SettingsFileTest : public testing::Test {
public:
    SettingsFileTest(const SettingsFileTest&) = delete;
    SettingsFileTest& operator=(const SettingsFileTest&) = delete;
    ~SettingsFileTest() override { std::filesystem::remove_all(folder_); }

protected:
    SettingsFileTest() {
        std::string pattern = testing::TempDir() + "lumaro-XXXXXX";
        folder_ = mkdtemp(pattern.data());
    }

    std::string path() const { return folder_ + "/profile/settings.ini"; }

    std::string folder_;
    RecordingLog log_;
};

struct FileDefaults : SettingsFileTest {
    SettingsFile defaults{path(), log_};
};
struct DefaultsInMemory : testing::Test {
    MemoryDefaults defaults;
};

template <class Defaults>
class UserDefaultsContract : public Defaults {};

using Kinds = testing::Types<DefaultsInMemory, FileDefaults>;
TYPED_TEST_SUITE(UserDefaultsContract, Kinds);

TYPED_TEST(UserDefaultsContract, RemembersAtOnceAndForgetsWhatIsRemoved) {
    UserDefaults& settings = this->defaults;
    for (const auto& text : texts) {
        settings.setString("myDisplayName", text);
        EXPECT_EQ(settings.string("myDisplayName"), text);
    }
    for (const bool value : {true, false}) {
        settings.setBoolean("showsBoardOnDesktop", value);
        EXPECT_EQ(settings.boolean("showsBoardOnDesktop"), value);
    }
    settings.remove("showsBoardOnDesktop");
    settings.remove("showsBoardOnDesktop");
    EXPECT_EQ(settings.boolean("showsBoardOnDesktop"), std::nullopt);
    EXPECT_EQ(settings.string("never"), std::nullopt);
    EXPECT_NE(settings.string("myDisplayName"), std::nullopt);
}

TEST_F(SettingsFileTest, KeepsEveryValueOnTheDiskFromTheCallThatSetsIt) {
    SettingsFile settings{path(), log_};
    for (const auto& text : texts) {
        settings.setString("text", text);
        settings.setBoolean("flag", text.empty());
        // Another one of the same file would share its memory; this one has the bytes alone.
        std::filesystem::copy_file(path(), folder_ + "/copy.ini");
        const SettingsFile copy{folder_ + "/copy.ini", log_};
        EXPECT_EQ(copy.string("text"), text);
        EXPECT_EQ(copy.boolean("flag"), text.empty());
        std::filesystem::remove(folder_ + "/copy.ini");
    }
    EXPECT_TRUE(log_.lines.empty());
}

TEST_F(SettingsFileTest, ReadsWhatPeopleWroteByHandAndKeepsWhatItDoesNotKnow) {
    const auto hand = folder_ + "/hand.ini";
    std::ofstream{hand} << "[General]\nserverURL=https://rooms.example\nshowsBoardOnDesktop=true\nfuture=1\n";
    {
        SettingsFile settings{hand, log_};
        EXPECT_EQ(settings.string("serverURL"), "https://rooms.example");
        EXPECT_EQ(settings.boolean("showsBoardOnDesktop"), true);
        settings.setString("myDisplayName", "Mira");
    }
    const SettingsFile again{hand, log_};
    EXPECT_EQ(again.string("future"), "1");
}

TEST_F(SettingsFileTest, ADiskThatFailsIsLoggedAndGetsWhatItMissedOnceItWorks) {
    std::ofstream{folder_ + "/profile"} << "a file in place of the folder";
    SettingsFile settings{path(), log_};
    settings.setString("myDisplayName", "Mira");
    settings.setBoolean("flag", true);
    EXPECT_EQ(settings.string("myDisplayName"), "Mira");
    EXPECT_EQ(settings.boolean("flag"), true);
    const std::vector<std::string> complaints(2, "settings: the settings could not be stored");
    EXPECT_EQ(log_.lines, complaints);
    std::filesystem::remove(folder_ + "/profile");
    settings.setString("partnerDisplayName", "Ivo");
    std::filesystem::copy_file(path(), folder_ + "/copy.ini");
    EXPECT_EQ((SettingsFile{folder_ + "/copy.ini", log_}.string("myDisplayName")), "Mira");
    EXPECT_EQ(log_.lines, complaints);
}

} // namespace
} // namespace lumaro
