// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/SecretServiceStore.h"

#include "Platform/Qt/QtBackgroundRunner.h"
#include "Tests/Platform/Linux/KeyringTest.h"
#include "Tests/Platform/Linux/StubSecretService.h"

namespace lumaro {
namespace {

using Person = StubSecretService::Person;

const SecretAddress token{"app.lumaro.Lumaro", "joinToken"};

std::vector<SecretStatus> everyAnswer(SecretStore& store) {
    const auto found = store.query(token);
    return {found ? SecretStatus::success : found.error(), store.add(token, "new"), store.update(token, "new"),
            store.remove(token)};
}

std::vector<SecretStatus> allOf(SecretStatus status) {
    return {status, status, status, status};
}

using SecretServiceTest = KeyringTest;

TEST_F(SecretServiceTest, AKeyringThatIsReallyLockedIsNotAnEmptyOne) {
    startKeyring();
    SecretServiceStore store;
    ASSERT_EQ(store.add(token, "secret"), SecretStatus::success);
    lockKeyring();
    // Nobody is there to be asked: the first prompt ends at once, and no other is made.
    EXPECT_EQ(store.query(token), std::unexpected(SecretStatus::promptDismissed));
    EXPECT_EQ(everyAnswer(store), allOf(SecretStatus::locked));
    stopKeyring();
    startKeyring();
    EXPECT_EQ(store.query(token), "secret");
}

TEST_F(SecretServiceTest, AServiceWithoutAnyKeyringIsEmptyUntilOneIsLeftBehindShut) {
    startDaemonAlone();
    SecretServiceStore store;
    EXPECT_EQ(store.query(token), std::unexpected(SecretStatus::itemNotFound));
    EXPECT_EQ(store.remove(token), SecretStatus::itemNotFound);
    // Nobody is there to choose the password of a new one.
    EXPECT_EQ(store.add(token, "secret"), SecretStatus::promptDismissed);
    stopKeyring();
    startKeyring();
    ASSERT_EQ(store.add(token, "secret"), SecretStatus::success);
    stopKeyring();
    startDaemonAlone();
    EXPECT_EQ(everyAnswer(store), allOf(SecretStatus::locked));
}

TEST_F(SecretServiceTest, NoServiceAndNoBusAreNotEmptyEither) {
    SecretServiceStore store;
    EXPECT_EQ(everyAnswer(store), allOf(SecretStatus::noService));
    startKeyring();
    EXPECT_EQ(store.query(token), std::unexpected(SecretStatus::itemNotFound));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    EXPECT_EQ(everyAnswer(store), allOf(SecretStatus::noService));
}

class PromptTest : public BusTest {
protected:
    // What the store answers from a thread of its own, while the service answers on this one.
    SecretStatus query() { return queryOf(store_); }
    SecretStatus queryOf(SecretServiceStore& store) {
        std::optional<SecretStatus> status;
        const auto task = inBackground(
            runner_,
            [&] {
                const auto found = store.query(token);
                return found ? SecretStatus::success : found.error();
            },
            [&](SecretStatus answer) { status = answer; });
        waitUntil([&] { return status || (stopsAtPrompt_ && service_.prompts > 0); });
        if (!status) store.stop();
        waitUntil([&] { return status.has_value(); });
        return *status;
    }

    StubSecretService service_{bus()};
    SecretServiceStore store_;
    QtBackgroundRunner runner_;
    bool stopsAtPrompt_ = false;
};

TEST_F(PromptTest, APersonIsAskedAndOpensTheKeyring) {
    EXPECT_EQ(query(), SecretStatus::itemNotFound);
    EXPECT_EQ(query(), SecretStatus::itemNotFound);
    EXPECT_EQ(service_.prompts, 1);
}

TEST_F(PromptTest, APersonWhoWouldNotIsAskedAgainOnlyOnTheirOwnWish) {
    service_.person = Person::dismisses;
    EXPECT_EQ(query(), SecretStatus::promptDismissed);
    EXPECT_EQ(query(), SecretStatus::locked);
    EXPECT_EQ(service_.prompts, 1);
    service_.person = Person::opens;
    store_.askAgain();
    EXPECT_EQ(query(), SecretStatus::itemNotFound);
}

TEST_F(PromptTest, APersonWhoIsAwayHoldsNothingUpForEver) {
    service_.person = Person::isAway;
    SecretServiceStore impatient{{.prompt = Seconds{0.5}}};
    EXPECT_EQ(queryOf(impatient), SecretStatus::locked);
    EXPECT_EQ(queryOf(impatient), SecretStatus::locked);
    EXPECT_EQ(service_.prompts, 1);
    EXPECT_EQ(service_.dismissals, 1);
}

TEST_F(PromptTest, AProgramThatEndsDoesNotWaitForThePerson) {
    service_.person = Person::isAway;
    stopsAtPrompt_ = true;
    EXPECT_EQ(query(), SecretStatus::locked);
    EXPECT_EQ(query(), SecretStatus::other);
}

} // namespace
} // namespace lumaro
