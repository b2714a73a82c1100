// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Pairing/RoomCheck.h"

#include "Tests/Fakes/ScriptedHttpClient.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

TEST(RoomCheckTest, P47_WhatAnswersIsToldByItsCard) {
    const std::vector<std::pair<HttpClient::Answer, RoomFinding>> rows{
        {HttpResponse{200, R"({"room":"lumaro","v":1})"}, RoomFinding::room},
        {HttpResponse{200, R"({"v":1,"more":[],"room":"lumaro"})"}, RoomFinding::room},
        {HttpResponse{200, R"({"room":"lumaro","v":2})"}, RoomFinding::newerRoom},
        {HttpResponse{200, R"({"room":"other","v":1})"}, RoomFinding::noRoom},
        {HttpResponse{200, R"({"room":"lumaro"})"}, RoomFinding::noRoom},
        {HttpResponse{200, "<html>"}, RoomFinding::noRoom},
        {HttpResponse{404, R"({"room":"lumaro","v":1})"}, RoomFinding::noRoom},
        {HttpResponse{301, ""}, RoomFinding::noRoom},
        {HttpResponse{503, ""}, RoomFinding::unwell},
        {std::unexpected(HttpFailure{"refused"}), RoomFinding::unreachable},
    };
    for (const auto& [answer, finding] : rows) {
        ScriptedHttpClient http;
        std::optional<RoomFinding> heard;
        const auto call = checkRoom(http, ServerAddress::parse("board.example/base").value(),
                                    [&](RoomFinding found) { heard = found; });
        EXPECT_EQ(http.requests.at(0).method + " " + http.requests.at(0).url, "GET https://board.example/base/room");
        http.answer(answer);
        EXPECT_EQ(heard, finding) << (answer ? answer->body : answer.error().message);
    }
}

} // namespace
} // namespace lumaro
