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

TEST_F(PairingClientTest, P9_P10_P16_AsksWithTheRightMethodPathBodyAndHeaders) {
    const auto ignore = [](const auto&) {};
    const std::vector<HttpHeader> headers{{"content-type", "application/json"}, {"x-lmr-client", "mac/1.2"}};
    auto authorized = headers;
    authorized.push_back({"authorization", "Bearer lm1.q3.a.zzz"});
    const auto asked = [&](const PairingClient::Call& /*held while it is looked at*/) {
        const auto& request = http.requests.back();
        EXPECT_EQ(request.headers, request.url.find("/couples/") == std::string::npos ? headers : authorized);
        EXPECT_EQ(request.timeout, Seconds{15});
        return request.method + " " + request.url + " " + request.body;
    };
    const std::string base = "https://board.example/api";
    const std::string couple = base + "/couples/q3";
    EXPECT_EQ(asked(client.createCouple("d1", "Ada \"A\"", ignore)),
              "POST " + base + R"(/couples {"deviceId":"d1","name":"Ada \"A\""})");
    EXPECT_EQ(asked(client.setName("Ada", token, ignore)), "PUT " + couple + R"(/names/self {"name":"Ada"})");
    EXPECT_EQ(asked(client.mintLink(token, "Ada", ignore)), "POST " + couple + R"(/links {"name":"Ada"})");
    EXPECT_EQ(asked(client.resetLinks(token, ignore)), "DELETE " + couple + "/links ");
    EXPECT_EQ(asked(client.createCode(token, "Ada", ignore)), "POST " + couple + R"(/codes {"name":"Ada"})");
    EXPECT_EQ(asked(client.leave(token, ignore)), "DELETE " + couple + "/devices/self ");
    EXPECT_EQ(asked(client.releasePartner(token, ignore)), "DELETE " + couple + "/partner ");
    EXPECT_EQ(asked(client.joinByCode("012345", bea, ignore)),
              "POST " + base + R"(/joins/code {"code":"012345","deviceId":"d2","name":"Bea","slot":"b"})");
    EXPECT_EQ(asked(client.joinByLink("k7pq2m5x", {.deviceId = "d2", .name = "Bea", .slot = {}}, ignore)),
              "POST " + base + R"(/joins/link {"inviteId":"k7pq2m5x","deviceId":"d2","name":"Bea"})");
    EXPECT_EQ(asked(client.handoff("k7pq2m5x", ignore)), "POST " + base + R"(/handoff {"inviteId":"k7pq2m5x"})");
    EXPECT_EQ(asked(client.handoff(std::nullopt, ignore)), "POST " + base + "/handoff {}");
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
}

TEST_F(PairingClientTest, P11_TellsOneRefusalFromAnother) {
    const std::vector<std::pair<std::string, Case>> cases = {{"choose_person", Case::choosePerson},
                                                             {"invite_used", Case::linkUsed},
                                                             {"invite_expired", Case::linkExpired},
                                                             {"invite_not_found", Case::linkNotFound},
                                                             {"code_used", Case::codeUsed},
                                                             {"code_expired", Case::codeExpired},
                                                             {"code_not_found", Case::codeNotFound},
                                                             {"not_found", Case::codeNotFound},
                                                             {"rate_limited", Case::rateLimited},
                                                             {"unauthorized", Case::server},
                                                             {"later", Case::server}};
    for (const auto& [code, kind] : cases) {
        EXPECT_EQ(failure(HttpResponse{409, R"({"code":")" + code + R"(","message":"m"})"}),
                  (PairingFailure{.kind = kind, .names = {}, .suggested = {}, .status = 409, .message = "m"}));
    }
    EXPECT_EQ(failure(std::unexpected(HttpFailure{"no route"})).text(),
              "couldn't reach the board. it'll work once you're online.");
}

TEST_F(PairingClientTest, P11_TakesNotFoundForWhatTheCallLookedFor) {
    const HttpResponse notFound{404, R"({"code":"not_found","message":""})"};
    const auto ofHandoff = result<Handoff>([this](auto then) { return client.handoff({}, std::move(then)); }, notFound);
    const auto ofLeave = result<void>([this](auto then) { return client.leave(token, std::move(then)); }, notFound);
    EXPECT_EQ(ofHandoff.value().error().kind, Case::linkNotFound);
    EXPECT_EQ(ofLeave.value().error().kind, Case::server);
}

TEST_F(PairingClientTest, P12_LetsPeopleChooseBetweenTheTwo) {
    const auto chosen = failure(
        HttpResponse{409, R"({"code":"choose_person","message":"","names":{"a":"Ada","b":"Bea"},"suggested":"b"})"});
    EXPECT_EQ(chosen.names, (SlotNames{"Ada", "Bea"}));
    EXPECT_EQ(chosen.suggested, PartnerID::b);
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
        {"LUMARO://Join-Invite/?from=mail&i=k7pq2m5x&x=1", "k7pq2m5x"},
        {"come (https://board.example/for/k7pq2m5x).\nsee you!", "k7pq2m5x"},
        {"初めまして https://b.example/for/k7pq2m5xはこちら", "k7pq2m5x"},
        {"and/for/everyone: https://x/for/short https://x/dl/k7pq2m5x https://x/for/another1", "k7pq2m5x"},
        {"https://x/for/" + sixtyFour, sixtyFour},
        {"https://x/for/" + sixtyFour + "k", ""},
        {"https://x/for/k7pq2m5", ""},
        {"https://x/for/k7pq2m5x%20", ""},
        {"k7pq2m5x", ""},
        {"lumaro://join-invite?id=k7pq2m5x", ""},
        {"lumaro://join-invite#?i=k7pq2m5x", ""},
        {"", ""}};
    for (const auto& [text, inviteId] : cases) EXPECT_EQ(inviteIdIn(text).value_or(""), inviteId) << text;
    const auto own = ownInviteLink("K7_q-m5x", "http://[::1]:7700/api~1");
    EXPECT_EQ(own, "lumaro://join-invite?i=K7_q-m5x&s=http%3A%2F%2F%5B%3A%3A1%5D%3A7700%2Fapi~1");
    EXPECT_EQ(inviteIdIn(own), "K7_q-m5x");
    EXPECT_EQ(inviteServerIn(own), "http://[::1]:7700/api~1");
}

} // namespace
} // namespace lumaro
