// SPDX-License-Identifier: Apache-2.0
// What every UserDefaults promises, held by the settings file and by those in memory.
#include "Platform/Qt/SettingsFile.h"
#include "Tests/Fakes/MemoryDefaults.h"
#include "Tests/Fakes/RecordingLog.h"
#include "Tests/Support/ScratchFolder.h"

#include <filesystem>
#include <fstream>

namespace lumaro {
namespace {

const std::vector<std::string> texts{"",     "Mira",     "a b; c=d, \"e\"", "@invalid", "ü 🌻",
                                     "true", "%41\\x41", "two\nlines",      " spaces ", "[general]"};

class SettingsFileTest : public testing::Test {
protected:
    std::string path() const { return folder_.file("profile/settings.ini"); }
    // Another one of the same file would share its memory; this one has the bytes alone.
    SettingsFile copy() {
        const auto name = folder_.file("copy" + std::to_string(++copies_));
        std::filesystem::copy_file(path(), name);
        return SettingsFile{name, log_};
    }

    int copies_ = 0;
    ScratchFolder folder_;
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
        EXPECT_EQ(copy().string("text"), text);
        EXPECT_EQ(copy().boolean("flag"), text.empty());
    }
    EXPECT_TRUE(log_.lines.empty());
}

TEST_F(SettingsFileTest, ReadsWhatPeopleWroteByHandAndKeepsWhatItDoesNotKnow) {
    const auto hand = folder_.file("hand.ini");
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
    std::ofstream{folder_.file("profile")} << "a file in place of the folder";
    SettingsFile settings{path(), log_};
    settings.setString("myDisplayName", "Mira");
    EXPECT_EQ(settings.string("myDisplayName"), "Mira");
    const std::vector<std::string> complaints{"settings: the settings could not be stored"};
    EXPECT_EQ(log_.lines, complaints);
    std::filesystem::remove(folder_.file("profile"));
    settings.setString("partnerDisplayName", "Ivo");
    EXPECT_EQ(copy().string("myDisplayName"), "Mira");
    EXPECT_EQ(log_.lines, complaints);
}

} // namespace
} // namespace lumaro
