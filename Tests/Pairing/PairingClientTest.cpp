// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Pairing/PairingClient.h"

#include "LumaroCore/Support/Wire.h"
#include "Tests/Fakes/RecordingLog.h"
#include "Tests/Fakes/ScriptedHttpClient.h"

#include <gtest/gtest.h>

#include <fstream>

namespace lumaro {
namespace {

using Case = PairingFailure::Case;
using Answer = HttpClient::Answer;

const CoupleToken token = CoupleToken::parse("lm1.q3.a.zzz").value_or(CoupleToken{});
const PairingClient::Joiner bea{.deviceId = "d2", .name = "Bea", .slot = PartnerID::b};

template <class T>
PairingClient::Then<T> into(std::optional<std::expected<T, PairingFailure>>& result) {
    return [&result](std::expected<T, PairingFailure> answer) { result = std::move(answer); };
}

PairingFailure serverFault(int status) {
    PairingFailure failure;
    failure.status = status;
    return failure;
}

class PairingClientTest : public ::testing::Test {
protected:
    template <class T, class Ask>
    std::optional<std::expected<T, PairingFailure>> result(Ask ask, Answer answer) {
        std::optional<std::expected<T, PairingFailure>> heard;
        const PairingClient::Call call = ask(into<T>(heard));
        EXPECT_TRUE(http.answer(std::move(answer)));
        return heard;
    }
    // Of a join by code.
    PairingFailure failure(Answer answer) {
        const auto heard = result<Joined>(
            [this](auto then) { return client.joinByCode("012345", bea, std::move(then)); }, std::move(answer));
        EXPECT_TRUE(heard && !*heard);
        return heard->has_value() ? PairingFailure{} : heard->error();
    }

    ScriptedHttpClient http;
    RecordingLog log;
    PairingClient client{"https://board.example/api/", "1.2", http, log};
};

TEST(PairingMessages, P10_TheGoldenOnesReadAndWriteByteForByte) {
    std::ifstream file{LUMARO_GOLDEN_DIR "/pairing.jsonl"};
    int lines = 0;
    const auto expectNext = [&]<class T>(std::in_place_type_t<T>) {
        std::string line;
        std::getline(file, line);
        const auto read = Wire::decode<T>(line);
        ASSERT_TRUE(read) << line << read.error().path << ' ' << read.error().message;
        EXPECT_EQ(Wire::encode(*read), line);
        ++lines;
    };
    const auto expectAll = [&]<class... T>(std::in_place_type_t<T>... types) { (expectNext(types), ...); };
    expectAll(std::in_place_type<CreateCoupleRequest>, std::in_place_type<CreatedCouple>,
              std::in_place_type<NameRequest>, std::in_place_type<Invite>, std::in_place_type<ShareCode>,
              std::in_place_type<JoinByCodeRequest>, std::in_place_type<JoinByCodeRequest>,
              std::in_place_type<JoinByLinkRequest>, std::in_place_type<Joined>, std::in_place_type<Handoff>,
              std::in_place_type<HandoffRequest>, std::in_place_type<ServerError>, std::in_place_type<ServerError>);
    EXPECT_EQ(lines, 13);
}

TEST_F(PairingClientTest, P9_P10_AsksWithTheRightMethodPathBodyAndHeaders) {
    const auto ignore = [](const auto&) {};
    std::vector<PairingClient::Call> calls;
    calls.push_back(client.createCouple("d1", "Ada \"A\"", ignore));
    calls.push_back(client.setName("Ada", token, ignore));
    calls.push_back(client.mintLink(token, "Ada", ignore));
    calls.push_back(client.resetLinks(token, ignore));
    calls.push_back(client.createCode(token, "Ada", ignore));
    calls.push_back(client.leave(token, ignore));
    calls.push_back(client.releasePartner(token, ignore));
    calls.push_back(client.joinByCode("012345", bea, ignore));
    calls.push_back(client.joinByLink("k7pq2m5x", {.deviceId = "d2", .name = "Bea", .slot = {}}, ignore));
    calls.push_back(client.handoff("k7pq2m5x", ignore));
    calls.push_back(client.handoff(std::nullopt, ignore));
    const std::vector<std::string> expected = {
        R"(POST /couples {"deviceId":"d1","name":"Ada \"A\""})",
        R"(PUT /couples/q3/names/self {"name":"Ada"} +)",
        R"(POST /couples/q3/links {"name":"Ada"} +)",
        R"(DELETE /couples/q3/links  +)",
        R"(POST /couples/q3/codes {"name":"Ada"} +)",
        R"(DELETE /couples/q3/devices/self  +)",
        R"(DELETE /couples/q3/partner  +)",
        R"(POST /joins/code {"code":"012345","deviceId":"d2","name":"Bea","slot":"b"})",
        R"(POST /joins/link {"inviteId":"k7pq2m5x","deviceId":"d2","name":"Bea"})",
        R"(POST /handoff {"inviteId":"k7pq2m5x"})",
        R"(POST /handoff {})"};
    ASSERT_EQ(http.requests.size(), expected.size());
    const std::string base = "https://board.example/api";
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const auto& request = http.requests[i];
        std::vector<HttpHeader> headers = {{"content-type", "application/json"}, {"x-lmr-client", "mac/1.2"}};
        const bool isOnCouple = expected[i].ends_with('+');
        if (isOnCouple) headers.push_back({"authorization", "Bearer lm1.q3.a.zzz"});
        EXPECT_EQ(request.headers, headers) << expected[i];
        EXPECT_EQ(request.timeout, Seconds{15});
        ASSERT_TRUE(request.url.starts_with(base));
        EXPECT_EQ(request.method + " " + request.url.substr(base.size()) + " " + request.body +
                      (isOnCouple ? " +" : ""),
                  expected[i]);
    }
}

TEST_F(PairingClientTest, HandsOnWhatTheServiceAnswers) {
    const auto joined = result<Joined>(
        [this](auto then) { return client.joinByLink("k7pq2m5x", bea, std::move(then)); },
        HttpResponse{201, R"({"token":"t","coupleId":"q3","partnerName":"","slot":"b","status":"already","new":1})"});
    EXPECT_EQ(joined,
              (std::expected<Joined, PairingFailure>{Joined{"t", "q3", "", PartnerID::b, JoinStatus::already}}));
    const auto left =
        result<void>([this](auto then) { return client.leave(token, std::move(then)); }, HttpResponse{204, ""});
    EXPECT_TRUE(left && *left);
    const auto invite = result<std::string>([this](auto then) { return client.handoff({}, std::move(then)); },
                                            HttpResponse{200, R"({"inviteId":"k7pq2m5x"})"});
    EXPECT_EQ(invite.value().value_or(""), "k7pq2m5x");
}

TEST_F(PairingClientTest, P11_GivesEachRefusalItsTextForPeople) {
    const std::string replaced = "that link was replaced — ask them for the new one 💌";
    const std::string noAnswer = "the board didn't answer just then. try again in a moment?";
    const std::vector<std::tuple<std::string, Case, std::string>> cases = {
        {"choose_person", Case::choosePerson, "which of you is this mac?"},
        {"invite_used", Case::linkUsed, "that invite was single-use and it's been used — ask them for our link 💌"},
        {"invite_expired", Case::linkExpired, replaced},
        {"invite_not_found", Case::linkNotFound, replaced},
        {"code_used", Case::codeUsed, "that code's been used — ask them for a fresh one 💌"},
        {"code_expired", Case::codeExpired, "that code timed out — ask them for a fresh one 💌"},
        {"code_not_found", Case::codeNotFound, "those digits don't match a board. check them with them?"},
        {"not_found", Case::codeNotFound, "those digits don't match a board. check them with them?"},
        {"rate_limited", Case::rateLimited, "a few too many wrong codes just now. give it a little while?"},
        {"unauthorized", Case::server, noAnswer},
        {"later", Case::server, noAnswer}};
    for (const auto& [code, kind, text] : cases) {
        const auto heard = failure(HttpResponse{409, R"({"code":")" + code + R"(","message":"m"})"});
        EXPECT_EQ(heard, (PairingFailure{.kind = kind, .names = {}, .suggested = {}, .status = 409, .message = "m"}));
        EXPECT_EQ(heard.text(), text);
    }
    EXPECT_EQ(failure(std::unexpected(HttpFailure{"no route"})).text(),
              "couldn't reach the board. it'll work once you're online.");
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(PairingClientTest, P11_TakesNotFoundForWhatTheCallLookedFor) {
    const HttpResponse notFound{404, R"({"code":"not_found","message":""})"};
    const auto ofLink =
        result<Joined>([this](auto then) { return client.joinByLink("x", bea, std::move(then)); }, notFound);
    const auto ofHandoff =
        result<std::string>([this](auto then) { return client.handoff({}, std::move(then)); }, notFound);
    const auto ofLeave = result<void>([this](auto then) { return client.leave(token, std::move(then)); }, notFound);
    EXPECT_EQ(ofLink.value().error().kind, Case::linkNotFound);
    EXPECT_EQ(ofHandoff.value().error().kind, Case::linkNotFound);
    EXPECT_EQ(ofLeave.value().error().kind, Case::server);
}

TEST_F(PairingClientTest, P12_LetsPeopleChooseBetweenTheTwo) {
    const auto chosen = failure(
        HttpResponse{409, R"({"code":"choose_person","message":"","names":{"a":"Ada","b":"Bea"},"suggested":"b"})"});
    EXPECT_EQ(chosen.names, (SlotNames{"Ada", "Bea"}));
    EXPECT_EQ(chosen.suggested, PartnerID::b);
    const auto nameless = failure(HttpResponse{409, R"({"code":"choose_person","message":""})"});
    EXPECT_EQ(nameless.names, SlotNames{});
    EXPECT_EQ(nameless.suggested, std::nullopt);
}

TEST_F(PairingClientTest, P11_CallsAnUnreadableAnswerTheServersFaultAndKeepsItOutOfTheLog) {
    for (const char* body : {"", "<html>", R"({"code":7})", R"({"code":"choose_person","message":"","suggested":"c"})"})
        EXPECT_EQ(failure(HttpResponse{502, body}), serverFault(502)) << body;
    EXPECT_TRUE(log.lines.empty());
    for (const char* body : {R"({"secret":"zzz)", R"({"token":"zzz","coupleId":"q3"})",
                             R"({"token":"t","coupleId":"q3","partnerName":"","slot":"zzz","status":"joined"})"})
        EXPECT_EQ(failure(HttpResponse{200, body}), serverFault(200)) << body;
    const std::string start = "pairing: pairing response did not decode: ";
    EXPECT_EQ(log.lines, (std::vector<std::string>{start + "not one JSON value", start + "missing $.partnerName",
                                                   start + "invalid value of $.slot"}));
}

TEST_F(PairingClientTest, MayBeDroppedWithTheCallByTheOneWhoHears) {
    auto own = std::make_unique<PairingClient>("http://x", "1", http, log);
    PairingClient::Call call;
    bool heard = false;
    call = own->createCode(token, "Ada", [&](const auto& answer) {
        call.reset();
        own.reset();
        heard = !answer;
    });
    http.answer(HttpResponse{200, "{}"});
    EXPECT_TRUE(heard);
}

TEST(InviteLink, P14_NormalizesWhatPeopleType) {
    for (const auto& [typed, code] : {std::pair{"12 34-56", "123456"},
                                      {"123456789", "123456"},
                                      {" 1a2\u00a03", "123"},
                                      {"٠١٢٣٤٥", "012345"},
                                      {"１２３４５６", "123456"},
                                      {"\xf0\x9d\x9f\x98\xf0\x9d\x9f\xa1", "09"}, // two of the five mathematical sets
                                      {"½\xff\xf0①7", "7"},
                                      {"", ""}})
        EXPECT_EQ(normalizeCode(typed), code) << typed;
}

TEST(InviteLink, P13_FindsTheInviteInALinkAndInTheTextAroundIt) {
    const std::string sixtyFour(64, 'k');
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"https://board.example/for/k7pq2m5x", "k7pq2m5x"},
        {"http://[::1]:7700/api/dl/K7_q-m5x?from=chat#top", "K7_q-m5x"},
        {"  board.example/for/k7pq2m5x/ ", "k7pq2m5x"},
        {"/for/k7pq2m5x", "k7pq2m5x"},
        {"lumaro://join-invite?i=k7pq2m5x", "k7pq2m5x"},
        {"LUMARO://Join-Invite/?from=mail&i=k7pq2m5x&x=1", "k7pq2m5x"},
        {"come (https://board.example/for/k7pq2m5x).\nsee you!", "k7pq2m5x"},
        {"<a href=\"lumaro://join-invite?i=k7pq2m5x\">", "k7pq2m5x"},
        {"初めまして https://b.example/for/k7pq2m5xはこちら", "k7pq2m5x"},
        {"and/for/everyone: https://x/for/short https://x/dl/k7pq2m5x https://x/for/another1", "k7pq2m5x"},
        {"https://x/for/" + sixtyFour, sixtyFour},
        {"https://x/for/" + sixtyFour + "k", ""},
        {"https://x/for/k7pq2m5", ""},
        {"https://x/for/k7pq2m5x%20", ""},
        {"https://x/download", ""},
        {"k7pq2m5x", ""},
        {"and/for/everyone", ""},
        {"lumaro://join-invite?id=k7pq2m5x", ""},
        {"lumaro://join-invites?i=k7pq2m5x", ""},
        {"lumaro://join-invite#?i=k7pq2m5x", ""},
        {"", ""}};
    for (const auto& [text, inviteId] : cases) EXPECT_EQ(inviteIdIn(text).value_or(""), inviteId) << text;
}

} // namespace
} // namespace lumaro
