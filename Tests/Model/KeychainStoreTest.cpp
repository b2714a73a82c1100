// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/KeychainStore.h"

#include "Tests/Fakes/MemorySecretStore.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

using Calls = std::vector<std::string>;

class KeychainStoreTest : public testing::Test {
protected:
    using Link = KeychainStore::Result<std::optional<BoardLink>>;

    const SecretAddress token_{"app.lumaro.Lumaro", "joinToken"};
    const BoardLink link_{"couple", "invite-1", "https://rooms.example/for/invite-1"};
    MemorySecretStore secrets_;
    KeychainStore keychain_{secrets_};
};

TEST_F(KeychainStoreTest, AReadTellsFoundFromEmptyFromEveryFailure) {
    EXPECT_EQ(keychain_.read("joinToken"), (ReadResult{ReadResult::Empty{}}));
    const std::string bytes("a\0\xff", 3);
    ASSERT_TRUE(keychain_.save(bytes, "joinToken"));
    EXPECT_EQ(keychain_.read("joinToken"), (ReadResult{ReadResult::Found{bytes}}));
    EXPECT_EQ(keychain_.read("boardLink"), (ReadResult{ReadResult::Empty{}}));
    for (const auto status : {SecretStatus::locked, SecretStatus::promptDismissed, SecretStatus::noService,
                              SecretStatus::other, SecretStatus::duplicateItem, SecretStatus{-34018}}) {
        secrets_.refusal = status;
        EXPECT_EQ(keychain_.read("joinToken"), (ReadResult{ReadResult::Failed{status}}));
    }
}

TEST_F(KeychainStoreTest, ASaveLeavesOneItemWithTheLastValueEvenWhereNoneCanBeRemoved) {
    ASSERT_TRUE(keychain_.save("first", "joinToken"));
    secrets_.fault = [](std::string_view call, const SecretAddress&) {
        return call == "remove" ? std::optional{SecretStatus::other} : std::nullopt;
    };
    ASSERT_TRUE(keychain_.save("second", "joinToken"));
    const std::map<SecretAddress, std::string> one{{token_, "second"}};
    EXPECT_EQ(secrets_.items, one);
    EXPECT_EQ(secrets_.calls,
              (Calls{"remove joinToken", "add joinToken", "remove joinToken", "add joinToken", "update joinToken"}));
    secrets_.refusal = SecretStatus::locked;
    EXPECT_EQ(keychain_.save("third", "joinToken"), std::unexpected(SecretStatus::locked));
    EXPECT_EQ(secrets_.items, one);
}

TEST_F(KeychainStoreTest, RemovingTwiceIsNoErrorAndAFailureIs) {
    ASSERT_TRUE(keychain_.save("x", "joinToken"));
    EXPECT_TRUE(keychain_.remove("joinToken"));
    EXPECT_TRUE(secrets_.items.empty());
    EXPECT_TRUE(keychain_.remove("joinToken"));
    secrets_.refusal = SecretStatus::locked;
    EXPECT_EQ(keychain_.remove("joinToken"), std::unexpected(SecretStatus::locked));
}

TEST_F(KeychainStoreTest, TheBoardLinkComesBackAndALockedKeychainIsNotNone) {
    EXPECT_EQ(keychain_.readBoardLink(), Link{});
    ASSERT_TRUE(keychain_.saveBoardLink(link_));
    EXPECT_EQ(keychain_.readBoardLink(), Link{link_});
    auto& stored = secrets_.items[{"app.lumaro.Lumaro", "boardLink"}];
    EXPECT_EQ(stored, R"({"coupleId":"couple","inviteId":"invite-1","url":"https://rooms.example/for/invite-1"})");
    for (const auto* text : {"", "{}", "no JSON", R"({"coupleId":1})"}) {
        stored = text;
        EXPECT_EQ(keychain_.readBoardLink(), Link{}) << text;
    }
    secrets_.refusal = SecretStatus::locked;
    EXPECT_EQ(keychain_.readBoardLink(), Link{std::unexpected(SecretStatus::locked)});
}

TEST_F(KeychainStoreTest, ProfilesWithOneStoreKeepApart) {
    KeychainStore other{secrets_, "app.lumaro.Lumaro.other"};
    ASSERT_TRUE(keychain_.save("ours", "joinToken"));
    EXPECT_EQ(other.read("joinToken"), (ReadResult{ReadResult::Empty{}}));
    ASSERT_TRUE(other.remove("joinToken"));
    EXPECT_EQ(keychain_.read("joinToken"), (ReadResult{ReadResult::Found{"ours"}}));
}

} // namespace
} // namespace lumaro
