// SPDX-License-Identifier: Apache-2.0
// What every SecretStore promises, held by the one in memory, by files, and by a real keyring.
#include "Platform/Linux/SecretServiceStore.h"
#include "Platform/Posix/FileSecretStore.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Tests/Fakes/MemorySecretStore.h"
#include "Tests/Platform/Linux/KeyringTest.h"

#include <sys/stat.h>

namespace lumaro {
namespace {

struct MemorySecrets : QtTest {
    MemorySecretStore store;
};

struct FileSecrets : KeyringTest {
    PosixFileSystem files;
    FileSecretStore store{files, path("secrets")};
};

struct KeyringSecrets : KeyringTest {
    KeyringSecrets() { startKeyring(); }
    SecretServiceStore store;
};

template <class Secrets>
class SecretStoreContract : public Secrets {};

using Stores = testing::Types<MemorySecrets, FileSecrets, KeyringSecrets>;
TYPED_TEST_SUITE(SecretStoreContract, Stores);

const SecretAddress token{"app.lumaro.Lumaro", "joinToken"};

TYPED_TEST(SecretStoreContract, GivesBackWhatWasAddedByteForByte) {
    const std::vector<std::string> data{"lmr_abc.def", "", "ü \n\"%", std::string("a\0b\xff\r\n", 6),
                                        std::string(70000, 'x')};
    for (const auto& bytes : data) {
        ASSERT_EQ(this->store.add(token, bytes), SecretStatus::success);
        EXPECT_EQ(this->store.query(token), bytes);
        ASSERT_EQ(this->store.remove(token), SecretStatus::success);
    }
}

TYPED_TEST(SecretStoreContract, KeepsOneItemForEachAddress) {
    const std::vector<SecretAddress> others{{"app.lumaro.Lumaro", "boardLink"},
                                            {"app.lumaro.Other", "joinToken"},
                                            {"app.lumaro", "Lumaro.joinToken"},
                                            {"app.lumaro.Lumaro", "../joinToken"},
                                            {"app.lumaro.Lumaro", "joinToken@"}};
    ASSERT_EQ(this->store.add(token, "first"), SecretStatus::success);
    EXPECT_EQ(this->store.add(token, "second"), SecretStatus::duplicateItem);
    EXPECT_EQ(this->store.query(token), "first");
    for (const auto& address : others) {
        EXPECT_EQ(this->store.query(address), std::unexpected(SecretStatus::itemNotFound)) << address.account;
        EXPECT_EQ(this->store.add(address, address.account), SecretStatus::success);
    }
    ASSERT_EQ(this->store.update(token, "third"), SecretStatus::success);
    ASSERT_EQ(this->store.remove(others.front()), SecretStatus::success);
    EXPECT_EQ(this->store.query(token), "third");
    for (std::size_t i = 1; i < others.size(); ++i) EXPECT_EQ(this->store.query(others[i]), others[i].account);
}

TYPED_TEST(SecretStoreContract, SaysThatAnItemIsNotThere) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(this->store.query(token), std::unexpected(SecretStatus::itemNotFound));
        EXPECT_EQ(this->store.update(token, "x"), SecretStatus::itemNotFound);
        EXPECT_EQ(this->store.remove(token), SecretStatus::itemNotFound);
        ASSERT_EQ(this->store.add(token, "x"), SecretStatus::success);
        ASSERT_EQ(this->store.remove(token), SecretStatus::success);
    }
}

TEST_F(FileSecrets, AreForTheirOwnerAloneAndOutliveTheProgram) {
    ASSERT_EQ(store.add(token, "x"), SecretStatus::success);
    struct stat status{};
    ASSERT_EQ(stat(path("secrets/app.lumaro.Lumaro@joinToken").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    FileSecretStore later{files, path("secrets")};
    EXPECT_EQ(later.query(token), "x");
}

TEST_F(FileSecrets, TellADiskThatFailsFromOneThatIsEmpty) {
    FileSecretStore broken{files, path("bus/secrets")};
    EXPECT_EQ(broken.add(token, "x"), SecretStatus::other);
    ASSERT_TRUE(files.createDirectories(path("secrets/app.lumaro.Lumaro@joinToken")));
    EXPECT_EQ(store.query(token), std::unexpected(SecretStatus::other));
    EXPECT_EQ(store.add(token, "x"), SecretStatus::other);
}

} // namespace
} // namespace lumaro
