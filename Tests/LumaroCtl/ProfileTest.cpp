// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/Profile.h"

#include "LumaroControl/Moments.h"
#include "Samples/Samples.h"
#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Fakes/MemoryFileSystem.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

class ProfileTest : public testing::Test {
protected:
    Profile opened() { return Profile::open(disk_, ids_, "/home/bo/lumaro").value(); }
    Profile paired() {
        auto profile = opened();
        EXPECT_TRUE(profile.createFolder() && profile.nameDevice() &&
                    profile.pair(token_, "https://board.example", "Bo"));
        return profile;
    }

    MemoryFileSystem disk_;
    CountingUUIDs ids_;
    CoupleToken token_ = CoupleToken::parse("lm1.abc.b.hush7").value();
    const Board board_ = samples::typicalBoard();
};

TEST_F(ProfileTest, RemembersWhatItWasTold) {
    EXPECT_FALSE(opened().token());
    auto profile = paired();
    const auto facts = profile.facts();
    EXPECT_EQ(facts, (ProfileFacts{samples::numberedId(1).lowerString(), "https://board.example", "Bo"}));
    EXPECT_EQ(profile.lastKnownBoard("abc"), Board{});
    ASSERT_TRUE(profile.saveBoard("abc", board_));
    EXPECT_EQ(opened().facts(), facts);
    EXPECT_EQ(opened().token(), token_);
    EXPECT_EQ(opened().lastKnownBoard("abc"), board_);
    ASSERT_TRUE(profile.nameDevice() && profile.unpair() && profile.unpair());
    EXPECT_FALSE(opened().token());
    EXPECT_EQ(opened().facts(), facts);
    EXPECT_EQ(opened().lastKnownBoard("abc"), Board{});
}

TEST_F(ProfileTest, KeepsTheTokenInAFileOfItsOwn) {
    ASSERT_TRUE(paired().saveBoard("abc", board_));
    const auto names = disk_.listFiles("/home/bo/lumaro").value();
    for (const auto& name : names) {
        const auto text = disk_.readFile("/home/bo/lumaro/" + name).value();
        EXPECT_EQ(text.find(token_.secret) != std::string::npos, name == "token") << name;
    }
    EXPECT_EQ(names.size(), 3U);
}

TEST_F(ProfileTest, IsTheOldOneOrTheNewOneWhenTheDiskIsFullOrThePowerGoes) {
    auto profile = paired();
    ASSERT_TRUE(profile.saveBoard("abc", board_));
    for (const char* call : {"writeFile", "syncFile", "rename", "syncDirectory"}) {
        disk_.fault = [call](std::string_view now) {
            return now == call ? std::optional{FileFault::noSpace} : std::nullopt;
        };
        const auto saved = profile.saveBoard("abc", Board{});
        ASSERT_FALSE(saved) << call;
        EXPECT_EQ(saved.error().status, ExitStatus::inOut);
        EXPECT_NE(saved.error().message.find("the disk is full"), std::string::npos) << saved.error().message;
        disk_.fault = nullptr;
        disk_.crash(5);
        EXPECT_EQ(opened().lastKnownBoard("abc"), board_) << call;
        EXPECT_EQ(opened().token(), token_) << call;
    }
}

TEST_F(ProfileTest, IsOnOneBoardOrTheOtherWhereverAJoinIsCutOff) {
    const auto other = CoupleToken::parse("lm1.xyz.a.hush9").value();
    for (const char* call : {"writeFile", "syncFile", "rename", "syncDirectory"}) {
        for (int passed = 0; passed < 2; ++passed) {
            auto profile = paired();
            disk_.fault = [call, left = passed](std::string_view now) mutable {
                return now == call && left-- == 0 ? std::optional{FileFault::noSpace} : std::nullopt;
            };
            ASSERT_FALSE(profile.pair(other, "https://new.example", "Bo")) << call << passed;
            disk_.fault = nullptr;
            disk_.crash(5);
            const auto now = opened();
            const bool isNew = now.token() == other;
            EXPECT_EQ(now.facts().server, isNew ? "https://new.example" : "https://board.example") << call << passed;
            EXPECT_TRUE(isNew || now.token() == token_) << call << passed;
        }
    }
    auto profile = paired();
    ASSERT_TRUE(profile.saveBoard("abc", board_) && profile.pair(other, "https://new.example", "Bo"));
    EXPECT_EQ(opened().facts(), profile.facts());
    EXPECT_EQ(opened().facts().server, "https://new.example");
    EXPECT_EQ(opened().lastKnownBoard("abc"), Board{}) << "the board that was left is forgotten";
}

TEST_F(ProfileTest, NamesAFileThatCannotBeReadAndLeavesIt) {
    auto profile = paired();
    for (const std::string name : {"profile.json", "token", "board-abc.json"}) {
        const auto path = "/home/bo/lumaro/" + name;
        const auto good = disk_.readFile(path).value_or("");
        for (const std::string bad : {"", "{", "lm1.ABC.a.hush7"}) {
            ASSERT_TRUE(disk_.writeFile(path, bad));
            auto read = Profile::open(disk_, ids_, "/home/bo/lumaro");
            const auto failure = read ? read->lastKnownBoard("abc").error() : read.error();
            EXPECT_EQ(failure.status, ExitStatus::config);
            EXPECT_TRUE(failure.message.starts_with(path + " cannot be read: ")) << failure.message;
            EXPECT_EQ(failure.message.find("hush7"), std::string::npos) << failure.message;
            EXPECT_EQ(disk_.readFile(path), bad);
        }
        ASSERT_TRUE(disk_.writeFile(path, good));
    }
}

TEST(Moments, AreReadAsPeopleWriteThem) {
    const Instant day{std::chrono::sys_days{std::chrono::year{2026} / 6 / 1}};
    EXPECT_EQ(parseMoment("2026-06-01Z"), day);
    EXPECT_EQ(parseMoment("2026-06-01T18:30Z"), day + std::chrono::minutes{1110});
    EXPECT_EQ(parseMoment("2026-06-01 8:05Z"), day + std::chrono::minutes{485});
    EXPECT_EQ(parseMoment("2026-06-01 18:30:15Z"), day + std::chrono::seconds{66615});
    for (const char* local : {"2026-06-01 18:30", "1999-12-31 23:59"}) {
        EXPECT_EQ(momentText(parseMoment(local).value()), local);
    }
    for (const char* bad : {"", "soon", "2026-6-1", "2026-02-29", "2026-13-01", "2026-06-01T", "2026-06-01T18",
                            "2026-06-01T24:00", "2026-06-01 18:60", "2026-06-01 18:3",
                            "2026-06-01 18:30:", "2026-06-01x", "2026-06-01T18:30:15.5", "-026-06-01"}) {
        EXPECT_FALSE(parseMoment(bad)) << bad;
    }
    EXPECT_EQ(parsePoint("-1.5,2e2"), (Point{-1.5, 200}));
    for (const char* bad : {"", "1", "1,", ",1", "1,2,3", "1, 2", "nan,1", "1,inf"})
        EXPECT_FALSE(parsePoint(bad)) << bad;
}

} // namespace
} // namespace lumaro
