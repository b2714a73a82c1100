// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Media/MediaTransfer.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "Samples/Samples.h"
#include "Tests/Fakes/ScriptedHttpClient.h"
#include "Tests/Model/StorageFixture.h"

#include <algorithm>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::numberedId;
using Lines = std::vector<std::string>;

const std::string picture = "\xff\xd8\xff\xe0JFIF";

Board showing(const std::vector<std::uint64_t>& media) {
    Board board;
    for (const auto id : media) board.items.emplace_back().payload = StickerPayload{numberedId(id)};
    return board;
}

class MediaTransferTest : public StorageFixture, public MediaTransfer::Listener {
protected:
    MediaTransferTest() { start(); }
    void start() {
        transfer_.reset();
        cache_.emplace(disk_, "/home/bo/media");
        transfer_.emplace(CoupleEndpoints{"https://board.example", token_.coupleId}, token_, *cache_,
                          MediaTransfer::Ports{http_, sleeper_, background_, log_}, *this);
        background_.runAll();
    }
    void TearDown() override {
        for (const auto& line : log_.lines) EXPECT_EQ(line.find(token_.secret), std::string::npos) << line;
    }
    void want(const std::vector<std::uint64_t>& media) { transfer_->want(showing(media)); }
    void putUp(std::uint64_t id, std::string bytes = picture) {
        transfer_->putUp(numberedId(id), std::move(bytes), [this, id](const std::expected<void, MediaError>& stored) {
            heard_.push_back((stored ? "stored " : "not stored ") + std::to_string(id));
        });
        background_.runAll();
    }
    /// Answers the oldest request, and lets all follow that comes of it at once.
    void answer(int status, std::string body = "") { answer(HttpResponse{status, std::move(body)}); }
    void answer(HttpClient::Answer answer) {
        ASSERT_TRUE(http_.answer(std::move(answer)));
        background_.runAll();
    }
    /// Method and number of each request since the last call.
    Lines asked() {
        Lines lines;
        for (; told_ < http_.requests.size(); ++told_) {
            const auto& request = http_.requests[told_];
            lines.push_back(request.method + " " + request.url.substr(request.url.size() - 1));
        }
        return lines;
    }
    Lines heard() { return std::exchange(heard_, {}); }

    void arrived(const UUID& id) override { hear("arrived", id); }
    void wentUp(const UUID& id) override { hear("went up", id); }
    void couldNotGoUp(const UUID& id, MediaFault why) override {
        hear(std::string{textOf(why)}.substr(std::string_view{"that picture couldn't go up"}.size()), id);
    }
    void hear(const std::string& what, const UUID& id) {
        heard_.push_back(what + " " + std::to_string(id.bytes.back()));
    }

    const CoupleToken token_ = CoupleToken::parse("lm1.abc.b.hush7").value();
    ScriptedHttpClient http_;
    Lines heard_;
    std::size_t told_ = 0;
    std::optional<MediaCache> cache_;
    std::optional<MediaTransfer> transfer_;
};

const HttpClient::Answer noLine = std::unexpected(HttpFailure{"no route"});

TEST_F(MediaTransferTest, FetchesWhatTheBoardShowsTwoAtATimeAndNothingTwice) {
    want({1, 2, 2, 3});
    EXPECT_EQ(asked(), (Lines{"GET 1", "GET 2"}));
    const auto& request = http_.requests.front();
    EXPECT_EQ(request.url, "https://board.example/couples/abc/media/" + numberedId(1).lowerString());
    EXPECT_EQ(request.headers, (std::vector<HttpHeader>{{"authorization", "Bearer lm1.abc.b.hush7"}}));
    answer(200, picture);
    EXPECT_EQ(heard(), Lines{"arrived 1"});
    EXPECT_EQ(cache_->read(numberedId(1)), picture);
    want({3, 1});
    EXPECT_EQ(asked(), Lines{"GET 3"});
    EXPECT_EQ(http_.open(), 1U) << "what the board shows no longer is let go";
    answer(200, picture);
    want({1});
    EXPECT_EQ(asked(), Lines{});
    cache_->flush();
    EXPECT_TRUE(disk_.readFile("/home/bo/media/index")->ends_with("1 8\n")) << "what the board shows is in use";
}

TEST_F(MediaTransferTest, ALineInTroubleIsTriedLaterAndLaterAndAtOnceWhenItIsBack) {
    const Lines both{"GET 1", "GET 2"};
    want({1, 2, 3});
    for (const int status : {503, 429, 408, 500}) {
        EXPECT_EQ(asked(), both);
        answer(status);
        answer(noLine);
        EXPECT_EQ(sleeper_.waiting(), 1U);
        sleeper_.advanceTo(sleeper_.nextDue().value());
    }
    EXPECT_EQ(sleeper_.now(), 1s + 2s + 4s + 8s);
    answer(200, picture);
    answer(noLine);
    EXPECT_EQ(sleeper_.nextDue(), sleeper_.now() + 1s) << "the room had answered";
    EXPECT_EQ(asked(), (Lines{"GET 1", "GET 2", "GET 3"}));
    transfer_->retryNow();
    EXPECT_EQ(asked(), Lines{"GET 2"});
    start();
    want({1, 2, 3});
    EXPECT_EQ(asked(), (Lines{"GET 2", "GET 3"})) << "a restart takes up what the board wants";
}

TEST_F(MediaTransferTest, WhatTheRoomHasNotOrNotAsAPictureIsSetAsideAlone) {
    const std::vector<std::pair<int, std::string>> rows{{404, ""},
                                                        {400, ""},
                                                        {200, "<html>sign in first</html>"},
                                                        {200, std::string(BoardSpec::maxMediaBytes + 1, 'x')}};
    for (const auto& [status, body] : rows) {
        start();
        want({1, 2});
        EXPECT_EQ(asked(), (Lines{"GET 1", "GET 2"})) << status;
        answer(status, body);
        want({1, 2, 3});
        EXPECT_EQ(asked(), Lines{"GET 3"}) << "the others go on";
        want({1});
        sleeper_.advance(60s - 1ms);
        EXPECT_EQ(asked(), Lines{});
        sleeper_.advance(1ms);
        EXPECT_EQ(asked(), Lines{"GET 1"});
        answer(status, body);
        sleeper_.advance(120s - 1ms);
        EXPECT_EQ(asked(), Lines{}) << "less and less often";
        transfer_->retryNow();
        EXPECT_EQ(asked(), Lines{"GET 1"});
        answer(status, body);
        want({});
        want({1});
        EXPECT_EQ(asked(), Lines{"GET 1"}) << "a later board names it anew";
    }
    EXPECT_TRUE(heard().empty());
}

TEST_F(MediaTransferTest, APictureOfOnesOwnGoesUpAndIsNamedOnlyOnceItIsStored) {
    transfer_->putUp(numberedId(1), picture, [this](const auto& stored) {
        EXPECT_TRUE(stored);
        EXPECT_EQ(transfer_->waitingToGoUp(), std::vector{numberedId(1)});
        EXPECT_EQ(http_.open(), 0U) << "whoever makes the batch can hold it back first";
        want({1});
    });
    EXPECT_EQ(transfer_->waitingToGoUp().size(), 0U);
    background_.runAll();
    EXPECT_EQ(asked(), Lines{"PUT 1"});
    EXPECT_EQ(http_.requests.back().body, picture);
    EXPECT_EQ(http_.requests.back().headers.back(), (HttpHeader{"content-type", "image/jpeg"}));
    answer(201, "{}");
    EXPECT_EQ(heard(), Lines{"went up 1"});
    EXPECT_EQ(transfer_->waitingToGoUp().size(), 0U);
    putUp(2, "no picture");
    failAt("writeFile", FileFault::noSpace);
    putUp(3);
    EXPECT_EQ(heard(), (Lines{"not stored 2", "not stored 3"}));
    EXPECT_EQ(asked(), Lines{});
}

TEST_F(MediaTransferTest, EveryAnswerToAnUploadIsAnEndOrAnotherTry) {
    struct Row {
        int status;      ///< 0 without an answer
        std::string end; ///< empty when it is tried again
        std::string body = {};
    };
    for (const auto& [status, end, body] : std::vector<Row>{
             {200, "went up 1"},
             {409, "went up 1"},
             {400, ". 1"},
             {413, " — it's too big. 1"},
             {415, " — it has to be a JPEG, a PNG or a WebP. 1"},
             {429, " — your board has no room for more pictures. 1", R"({"code":"limit_exceeded","message":""})"},
             {429, "", R"({"code":"rate_limited","message":""})"},
             {408, ""},
             {404, ""},
             {500, ""},
             {302, ""},
             {0, ""}}) {
        putUp(1);
        status == 0 ? answer(noLine) : answer(status, body);
        EXPECT_EQ(transfer_->waitingToGoUp().size(), end.empty() ? 1U : 0U) << status;
        if (end.empty()) {
            sleeper_.advance(1s);
            background_.runAll();
            answer(201);
        }
        EXPECT_EQ(heard(), (Lines{"stored 1", end.empty() ? "went up 1" : end})) << status;
    }
}

TEST_F(MediaTransferTest, UploadsGoOneByOneAndTakeTurnsAndOutliveALossOfPower) {
    for (const std::uint64_t id : {1, 2, 3}) putUp(id);
    answer(500);
    disk_.crash();
    transfer_->retryNow();
    background_.runAll();
    EXPECT_EQ(asked(), (Lines{"PUT 1", "PUT 2"}));
    start();
    EXPECT_EQ(transfer_->waitingToGoUp().size(), 3U);
    ASSERT_TRUE(disk_.removeFile("/home/bo/media/" + numberedId(2).lowerString()));
    for (int i = 0; i < 2; ++i) answer(200);
    EXPECT_EQ(asked(), (Lines{"PUT 1", "PUT 3"}));
    heard_.erase(heard_.begin(), heard_.begin() + 3);
    EXPECT_EQ(heard(), (Lines{"went up 1", " — its file is gone from this mac. 2", "went up 3"}));
    EXPECT_TRUE(transfer_->waitingToGoUp().empty());
}

TEST_F(MediaTransferTest, ARefusedTokenStopsAllUntilItIsKnownToBeGood) {
    for (const int status : {401, 403}) {
        putUp(1);
        want({2, 3});
        EXPECT_EQ(asked(), (Lines{"PUT 1", "GET 2", "GET 3"}));
        for (int i = 0; i < 3; ++i) answer(status);
        want({2, 3, 4});
        putUp(5);
        sleeper_.advance(24h);
        EXPECT_EQ(asked(), Lines{});
        transfer_->retryNow();
        background_.runAll();
        EXPECT_EQ(asked(), (Lines{"GET 2", "GET 3", "PUT 1"}));
        want({});
        for (int i = 0; i < 2; ++i) answer(200);
        asked();
    }
    EXPECT_EQ(std::ranges::count(log_.lines, "media: the room refused this token; no pictures for now"), 2);
}

} // namespace
} // namespace lumaro
