// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Pairing/PairingService.h"

#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroRoom/Pairing/Secrets.h"
#include "Samples/Samples.h"
#include "Tests/Fakes/MemoryStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <set>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using Person = PairingService::Person;

class SeededRandom final : public RandomSource {
public:
    void fill(std::span<std::uint8_t> bytes) override {
        for (auto& byte : bytes) {
            byte = planned.empty() ? static_cast<std::uint8_t>(random_()) : planned.front();
            if (!planned.empty()) planned.pop_front();
        }
    }
    std::deque<std::uint8_t> planned; ///< what comes first

private:
    samples::Random random_{5};
};

// What a call answered, as a line.
std::string lineOf(const PairingRefusal& refusal) {
    const auto suggested = refusal.suggested ? " suggests " + std::string{nameOf(*refusal.suggested)} : "";
    return std::to_string(refusal.status) + " " + refusal.code + suggested;
}
std::string lineOf(const PairingResult<Joined>& result) {
    if (!result->has_value()) return lineOf(result->error());
    const auto& joined = **result;
    return std::string{nameOf(joined.status)} + " as " + std::string{nameOf(joined.slot)} + " with \"" +
           joined.partnerName + "\"";
}
template <class T>
std::string lineOf(const PairingResult<T>& result) {
    return result->has_value() ? "taken" : lineOf(result->error());
}

// Ada has a board, from her laptop.
class PairingServiceTest : public testing::Test {
protected:
    PairingServiceTest() : board_(service_.createCouple(store_, {"laptop", "Ada", {}}, noon).value().value()) {}

    const std::string& id() const { return board_.coupleId; }
    DeviceRecord device(const std::string& deviceId) { return *store_.members(id()).value().findDevice(deviceId); }
    Members members() { return store_.members(id()).value(); }
    std::string newCode(Instant at = noon) {
        return service_.createCode(store_, id(), device("laptop"), "", at).value().value().code;
    }
    std::string joinByLink(const Person& person, Instant at = noon) {
        return lineOf(service_.joinByLink(store_, board_.invite.inviteId, person, at));
    }
    std::string joinByCode(const std::string& code, const Person& person, Instant at = noon,
                           const std::string& origin = "192.0.2.1") {
        return lineOf(service_.joinByCode(store_, code, person, origin, at));
    }

    MemoryStore store_;
    SeededRandom random_;
    PairingService service_{"https://board.example/", random_, {}};
    CreatedCouple board_;
};

TEST_F(PairingServiceTest, ANewBoardHasItsFounderAndAnInvite) {
    const auto token = CoupleToken::parse(board_.token).value();
    EXPECT_EQ(token.coupleId, id());
    EXPECT_EQ(token.slot, PartnerID::a);
    EXPECT_EQ(id().size(), 16U);
    EXPECT_EQ(token.secret.size(), 32U);
    EXPECT_EQ(members(), (Members{{.a = "Ada", .b = {}}, {{"laptop", PartnerID::a, sha256(board_.token)}}}));
    EXPECT_EQ(board_.invite.link, "https://board.example/for/" + board_.invite.inviteId);
    EXPECT_EQ(board_.invite.expiresAt, noon + std::chrono::days{30});
}

TEST_F(PairingServiceTest, P12_EveryoneFindsTheirSlot) {
    const struct {
        Person joiner;
        std::string expected;
    } cases[]{
        {{"tower", "Bo", {}}, R"(joined as b with "Ada")"},
        {{"tower", "Bo", {}}, R"(already as b with "Ada")"},
        {{"tower", "Bo", PartnerID::a}, R"(already as b with "Ada")"},
        {{"phone", "ada ", {}}, "409 choose_person suggests a"},
        {{"phone", "BO", {}}, "409 choose_person suggests b"},
        {{"phone", "Someone", {}}, "409 choose_person suggests b"},
        {{"phone", "", {}}, "409 choose_person suggests b"},
        {{"phone", "Ada", PartnerID::a}, R"(rejoined as a with "Bo")"},
        {{"tablet", "Bo", PartnerID::b}, R"(rejoined as b with "Ada")"},
    };
    for (const auto& [joiner, expected] : cases) EXPECT_EQ(joinByLink(joiner), expected) << joiner.deviceId;
    const auto refused = service_.joinByLink(store_, board_.invite.inviteId, {"pad", "", {}}, noon);
    EXPECT_EQ(refused->error().names, (SlotNames{"Ada", "Bo"}));
    ASSERT_TRUE(service_.leave(store_, id(), device("laptop"), noon)->has_value());
    ASSERT_TRUE(service_.leave(store_, id(), device("phone"), noon)->has_value());
    EXPECT_EQ(joinByLink({"pad", "Al", {}}), R"(joined as a with "Bo")") << "the slot that is free";
}

TEST_F(PairingServiceTest, P8_JoiningAgainEndsTheTokenFromBefore) {
    const auto again = service_.joinByCode(store_, newCode(), {"laptop", "", {}}, "192.0.2.1", noon)->value();
    EXPECT_EQ(again.status, JoinStatus::already);
    EXPECT_NE(again.token, board_.token);
    EXPECT_EQ(members().findToken(sha256(board_.token)), nullptr);
    EXPECT_EQ(members().findToken(sha256(again.token))->deviceId, "laptop");
    EXPECT_EQ(members().names.a, "Ada") << "an empty name changes none";
}

TEST_F(PairingServiceTest, P14_ACodeLetsOneDeviceInForTenMinutes) {
    const auto minted = service_.createCode(store_, id(), device("laptop"), "Ada L.", noon)->value();
    EXPECT_EQ(minted.slot, PartnerID::b);
    EXPECT_EQ(minted.expiresAt, noon + 10min);
    EXPECT_EQ(members().names.a, "Ada L.");
    EXPECT_EQ(joinByCode(minted.code, {"tower", "Bo", {}}, noon + 599s), R"(joined as b with "Ada L.")");
    EXPECT_EQ(joinByCode(minted.code, {"tower", "Bo", {}}), "410 code_used");
    EXPECT_EQ(joinByCode(newCode(), {"phone", "", {}}, noon + 600s), "410 code_expired");
    const auto ended = newCode();
    const auto latest = newCode();
    EXPECT_EQ(joinByCode(ended, {"phone", "", {}}), "410 code_used") << "a new code ends the old one";
    EXPECT_EQ(joinByCode(latest, {"phone", "", {}}), "409 choose_person suggests b");
    EXPECT_EQ(joinByCode(latest, {"phone", "", PartnerID::a}), R"(rejoined as a with "Bo")") << "it was not used up";
    EXPECT_EQ(joinByCode("12345x", {"phone", "", {}}), "404 code_not_found");
}

TEST_F(PairingServiceTest, P13_ALinkServesManyForThirtyDaysUntilItIsReplaced) {
    const auto mint = [&](Instant at) { return service_.mintLink(store_, id(), device("laptop"), "", at)->value(); };
    EXPECT_EQ(mint(noon + std::chrono::days{29}), board_.invite);
    EXPECT_EQ(joinByLink({"tower", "Bo", {}}), R"(joined as b with "Ada")");
    EXPECT_EQ(joinByLink({"phone", "Bo", PartnerID::b}), R"(rejoined as b with "Ada")");
    EXPECT_EQ(joinByLink({"pad", "Bo", {}}, noon + std::chrono::days{30}), "410 invite_expired");
    const auto handoff = [&](const std::optional<std::string>& invite, Instant at) {
        return lineOf(service_.handoff(store_, invite, at));
    };
    EXPECT_EQ(handoff(board_.invite.inviteId, noon), "taken");
    EXPECT_EQ(handoff(board_.invite.inviteId, noon + std::chrono::days{30}), "404 not_found");
    ASSERT_TRUE(service_.resetLinks(store_, id(), device("laptop"), noon)->has_value());
    for (const std::optional<std::string>& invite : {std::optional{board_.invite.inviteId}, {}, std::optional{id()}}) {
        EXPECT_EQ(handoff(invite, noon), "404 not_found");
    }
    EXPECT_EQ(joinByLink({"pad", "Bo", {}}), "410 invite_expired");
    EXPECT_EQ(lineOf(service_.joinByLink(store_, "nosuchinvite", {"pad", "", {}}, noon)), "404 invite_not_found");
    EXPECT_NE(mint(noon).inviteId, board_.invite.inviteId);
}

TEST_F(PairingServiceTest, P14_ResettingEndsCodesAsWellAsLinksOfThisBoardAlone) {
    const auto theirs = service_.createCouple(store_, {"desk", "Al", {}}, noon)->value();
    const auto code = newCode();
    const auto kept =
        service_.createCode(store_, theirs.coupleId, *store_.members(theirs.coupleId)->findDevice("desk"), "", noon);
    ASSERT_TRUE(service_.resetLinks(store_, id(), device("laptop"), noon)->has_value());
    EXPECT_EQ(joinByCode(code, {"tower", "Bo", {}}), "410 code_used");
    EXPECT_EQ(joinByLink({"tower", "Bo", {}}), "410 invite_expired");
    EXPECT_EQ(joinByCode(kept->value().code, {"tower", "Bo", {}}), R"(joined as b with "Al")");
    EXPECT_EQ(joinByCode(newCode(), {"phone", "Bo", {}}), R"(joined as b with "Ada")") << "the next one works";
}

TEST_F(PairingServiceTest, P15_WrongCodesAreCountedByOriginAndRightOnesAreNot) {
    const auto expired = newCode(noon - 1h);
    for (int i = 0; i < 12; ++i) joinByCode(newCode(), {"tower", "Bo", {}});
    for (int i = 0; i < 9; ++i) EXPECT_EQ(joinByCode("wrong", {"x", "", {}}), "404 code_not_found");
    EXPECT_EQ(joinByCode(expired, {"x", "", {}}), "410 code_used") << "the tenth that is not right";
    EXPECT_EQ(joinByCode(newCode(), {"tower", "", {}}), "429 rate_limited");
    EXPECT_EQ(joinByLink({"tower", "", {}}), R"(already as b with "Ada")") << "links are not guessed";
    EXPECT_EQ(joinByCode(newCode(), {"tower", "", {}}, noon, "192.0.2.2"), R"(already as b with "Ada")");
    EXPECT_EQ(joinByCode(newCode(noon + 601s), {"tower", "", {}}, noon + 601s), R"(already as b with "Ada")");
}

TEST_F(PairingServiceTest, P5_NamesAreTrimmedTextOfAtMostTwoHundredBytes) {
    const struct {
        std::string name;
        std::string answer;
        std::optional<std::string> known;
    } cases[]{{" Zoë 💌\n", "taken", "Zoë 💌"},
              {std::string(200, 'x'), "taken", std::string(200, 'x')},
              {std::string(201, 'x'), "400 bad_name", std::string(200, 'x')},
              {"two\nlines", "400 bad_name", std::string(200, 'x')},
              {"c1 \xc2\x85 x", "400 bad_name", std::string(200, 'x')},
              {"\xff", "400 bad_name", std::string(200, 'x')},
              {"  ", "taken", std::nullopt}};
    for (const auto& [name, answer, known] : cases) {
        EXPECT_EQ(lineOf(service_.setName(store_, id(), device("laptop"), name)), answer) << name;
        EXPECT_EQ(members().names.a, known) << name;
    }
    const auto bad = std::string{"\x01"};
    EXPECT_EQ(lineOf(service_.mintLink(store_, id(), device("laptop"), bad, noon)), "400 bad_name");
    EXPECT_EQ(lineOf(service_.createCode(store_, id(), device("laptop"), bad, noon)), "400 bad_name");
    EXPECT_EQ(lineOf(service_.createCouple(store_, {"d", bad, {}}, noon)), "400 bad_name");
    EXPECT_EQ(lineOf(service_.createCouple(store_, {" ", "Al", {}}, noon)), "400 bad_device");
    EXPECT_EQ(joinByLink({std::string(201, 'd'), "Bo", {}}), "400 bad_device");
}

TEST_F(PairingServiceTest, ASlotIsFreeWhenItsLastDeviceLeaves) {
    joinByLink({"tower", "Bo", {}});
    joinByLink({"phone", "Bo", PartnerID::b});
    const auto leave = [&](const std::string& name) {
        return lineOf(service_.leave(store_, id(), device(name), noon));
    };
    EXPECT_EQ(leave("tower"), "taken");
    EXPECT_EQ(members().names.b, "Bo");
    EXPECT_EQ(leave("phone"), "taken");
    EXPECT_EQ(members().names.b, std::nullopt);
    EXPECT_EQ(leave("laptop"), "taken");
    EXPECT_EQ(store_.couple(id()).value()->emptySince, noon);
    EXPECT_EQ(joinByLink({"laptop", "Ada", {}}), R"(joined as b with "")") << "the board is still there";
}

TEST_F(PairingServiceTest, APartnerWhoIsLetGoCannotWalkBackIn) {
    joinByLink({"tower", "Bo", {}});
    joinByLink({"phone", "Bo", PartnerID::b});
    const auto code = service_.createCode(store_, id(), device("tower"), "", noon)->value().code;
    random_.planned = {0, 0, 9};
    EXPECT_EQ(lineOf(service_.releasePartner(store_, id(), device("laptop"), noon)), "taken");
    EXPECT_EQ(members(), (Members{{.a = "Ada", .b = {}}, {device("laptop")}}));
    EXPECT_EQ(joinByLink({"tower", "Bo", {}}), "410 invite_expired");
    for (const auto& dead : {code, std::string{"000009"}}) {
        EXPECT_EQ(joinByCode(dead, {"tower", "Bo", {}}), "410 code_used");
    }
    EXPECT_EQ(joinByCode(newCode(), {"tower", "Bo", {}}), R"(joined as b with "Ada")") << "unless they are asked in";
}

TEST_F(PairingServiceTest, ABoardTakesSixteenDevices) {
    joinByLink({"tower", "Bo", {}});
    for (int i = 0; i < 14; ++i) joinByLink({"device " + std::to_string(i), "", PartnerID::b});
    EXPECT_EQ(joinByLink({"one more", "", PartnerID::b}), "409 too_many_devices");
    EXPECT_EQ(joinByLink({"tower", "", {}}), R"(already as b with "Ada")");
}

TEST_F(PairingServiceTest, DigitsOfALivingCodeAreDrawnAgain) {
    const auto other = service_.createCouple(store_, {"desk", "Al", {}}, noon)->value();
    const auto theirs = *store_.members(other.coupleId).value().findDevice("desk");
    random_.planned = {0, 0, 7, 0, 0, 7, 0xf4, 0x24, 0x00, 0, 0, 8};
    EXPECT_EQ(newCode(), "000007");
    EXPECT_EQ(service_.createCode(store_, other.coupleId, theirs, "", noon)->value().code, "000008")
        << "nor are those of the uneven end of the draw";
    EXPECT_EQ(joinByCode("000007", {"tower", "Bo", {}}), R"(joined as b with "Ada")");
}

TEST(Secrets, AreWhatTheyShouldBe) {
    constexpr std::uint8_t digest[]{0xba, 0x78, 0x16, 0xbf, 0x8f, 0x01, 0xcf, 0xea, 0x41, 0x41, 0x40,
                                    0xde, 0x5d, 0xae, 0x22, 0x23, 0xb0, 0x03, 0x61, 0xa3, 0x96, 0x17,
                                    0x7a, 0x9c, 0xb4, 0x10, 0xff, 0x61, 0xf2, 0x00, 0x15, 0xad};
    EXPECT_TRUE(std::ranges::equal(sha256("abc"), digest));
    SeededRandom random;
    std::set<char> letters;
    for (const char letter : randomText(random, 4000)) letters.insert(letter);
    EXPECT_EQ(std::string(letters.begin(), letters.end()), "234567abcdefghijklmnopqrstuvwxyz");
    TokenHash hash{};
    EXPECT_TRUE(equalInConstantTime(hash, TokenHash{}));
    hash.back() = 1;
    EXPECT_FALSE(equalInConstantTime(hash, TokenHash{}));
}

} // namespace
} // namespace lumaro
