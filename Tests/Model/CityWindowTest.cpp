// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/CityWindow.h"

#include "LumaroCore/Support/Wire.h"
#include "Tests/Fakes/ManualBackground.h"
#include "Tests/Fakes/ManualClock.h"
#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Fakes/RecordingLog.h"
#include "Tests/Fakes/ScriptedHttpClient.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

constexpr Coordinates berlin{52.516, 13.377};
constexpr Coordinates potsdam{52.40, 13.06}; // 25 km from there and a little
constexpr Coordinates mitte{52.53, 13.40};

/// Paints when the test says so, one picture at a time.
class FakeCityPainter final : public CityPainter {
public:
    bool isInstalled() override {
        ++timesAsked;
        return isThere;
    }
    std::unique_ptr<Run> paint(CityRequest request, std::move_only_function<void(Answer)> then) override {
        EXPECT_FALSE(then_) << "one runs already";
        EXPECT_TRUE(Wire::decode<CityRequest>(Wire::encode(request).value()));
        requests.push_back(std::move(request));
        then_ = std::move(then);
        return std::make_unique<Handle>(*this);
    }
    bool isPainting() const { return bool{then_}; }
    void answer(Answer answer) {
        ASSERT_TRUE(then_);
        std::exchange(then_, nullptr)(std::move(answer));
    }

    std::vector<CityRequest> requests;
    bool isThere = true;
    int timesAsked = 0;

private:
    class Handle final : public Run {
    public:
        explicit Handle(FakeCityPainter& painter) : painter_(painter) {}
        ~Handle() override { painter_.then_ = nullptr; }

    private:
        FakeCityPainter& painter_;
    };
    std::move_only_function<void(Answer)> then_;
};

/// Takes what begins with "city", under an id of its length.
class FakeCityPictures final : public CityPictureMaker {
public:
    std::optional<CityPicture> ofPicture(std::string_view png, std::int64_t width, std::int64_t height) override {
        if (!png.starts_with("city") || width != 992 || height != 680) return std::nullopt;
        CityPicture picture{{}, "\xff\xd8\xff" + std::string{png}};
        picture.id.bytes[0] = static_cast<std::uint8_t>(png.size());
        return picture;
    }
};

struct CityWindowTest : testing::Test {
    CityWindowTest() {
        announcer.onNews([this](const AppNews& news) { told += news.changed.has(AppChange::pictures) ? 1 : 0; });
    }
    void enter() { window.enter(endpoints, token); }
    void say(int status, std::string body = "") { ASSERT_TRUE(http.answer(HttpResponse{status, std::move(body)})); }
    void sayKey() { say(200, R"({"page":"https://city.example/","key":"k1"})"); }
    void paint(std::string png) {
        painter.answer(std::move(png));
        background.runAll();
    }
    void pass(Seconds span) { sleeper.advance(span); }
    /// On a board, with the first picture.
    void showFirst() {
        enter();
        window.want(berlin);
        sayKey();
        paint("city of noon");
        ASSERT_TRUE(state.city);
    }
    std::size_t asked() const { return http.requests.size(); }
    std::size_t painted() const { return painter.requests.size(); }

    CoupleEndpoints endpoints{"https://board.example", "q3m7xk2p"};
    CoupleToken token = CoupleToken::parse("lm1.q3m7xk2p.a.nbswy3dpo5xxe3de").value();
    ManualSleeper sleeper;
    ManualClock clock{sleeper, Instant{std::chrono::hours{500'000}}};
    ManualBackground background;
    ScriptedHttpClient http;
    RecordingLog log;
    MemoryFileSystem files;
    MediaCache cache{files, "/media"};
    FakeCityPainter painter;
    FakeCityPictures pictures;
    CityState state;
    Announcer announcer;
    int told = 0;
    CityWindow window{{}, {http, painter, pictures, background, sleeper, clock, log}, cache, state, announcer};
};

TEST_F(CityWindowTest, PaintsWhereThePartnerIsWithTheRoomsKey) {
    enter();
    EXPECT_EQ(asked(), 0U) << "no card hangs";
    window.want(berlin);
    ASSERT_EQ(asked(), 1U);
    EXPECT_EQ(http.requests[0].url, "https://board.example/couples/q3m7xk2p/window-key");
    EXPECT_EQ(http.requests[0].headers.size(), 1U);
    sayKey();
    ASSERT_EQ(painted(), 1U);
    EXPECT_EQ(painter.requests[0], (CityRequest{.page = "https://city.example/",
                                                .key = "k1",
                                                .lat = 52.52,
                                                .lon = 13.38,
                                                .at = clock.now(),
                                                .width = 496,
                                                .height = 340,
                                                .scale = 2}));
    EXPECT_FALSE(state.city);
    paint("city of noon");
    ASSERT_TRUE(state.city);
    EXPECT_EQ(cache.read(*state.city), "\xff\xd8\xff"
                                       "city of noon");
    EXPECT_EQ(told, 1);
}

TEST_F(CityWindowTest, PaintsOnePlaceOnceAnHourAndEveryPlaceNoOftenerThanItRests) {
    showFirst();
    window.want(Coordinates{52.5161, 13.3779}); // the same, as coarse as it travels
    pass(CityWindow::pace - Seconds{1});
    EXPECT_EQ(painted(), 1U);
    pass(Seconds{1});
    EXPECT_EQ(painted(), 2U);
    paint("city of one o'clock");
    window.want(mitte);
    EXPECT_EQ(painted(), 2U);
    pass(CityWindow::leastPace);
    ASSERT_EQ(painted(), 3U);
    EXPECT_EQ(painter.requests[2].lat, 52.53);
    EXPECT_TRUE(state.city) << "the one from nearby is there meanwhile";
    EXPECT_EQ(asked(), 1U);
}

TEST_F(CityWindowTest, ShowsNoCityOfAnotherPlaceAndNoneThatIsNotWanted) {
    showFirst();
    const auto first = state.city;
    window.want(std::nullopt);
    EXPECT_FALSE(state.city);
    window.want(berlin);
    EXPECT_EQ(state.city, first);
    window.want(potsdam);
    EXPECT_FALSE(state.city);
    pass(CityWindow::leastPace);
    ASSERT_TRUE(painter.isPainting());
    window.want(std::nullopt);
    EXPECT_FALSE(painter.isPainting());
    pass(2 * CityWindow::pace);
    EXPECT_EQ(painted(), 2U);
    window.want(potsdam);
    EXPECT_EQ(painted(), 3U) << "what was dropped is begun again";
    window.leave();
    EXPECT_FALSE(painter.isPainting());
    window.want(Coordinates{91, 0});
    window.want(mitte);
    enter();
    EXPECT_EQ(asked(), 1U) << "within the rest nothing is asked";
    pass(CityWindow::leastPace);
    EXPECT_EQ(asked(), 2U);
}

TEST_F(CityWindowTest, AsksARoomWithoutAPageOnceAndOneThatFailsLaterAndLater) {
    enter();
    window.want(berlin);
    say(404, R"({"code":"not_configured","message":""})");
    window.want(mitte);
    window.lookAgain();
    pass(24 * CityWindow::pace);
    EXPECT_EQ(asked(), 1U);
    enter();
    say(503);
    pass(Seconds{60});
    say(200, R"({"page":"http://city.example/","key":"k1"})");
    pass(Seconds{119});
    EXPECT_EQ(asked(), 3U);
    pass(Seconds{1});
    http.answer(std::unexpected(HttpFailure{"no answer in time"}));
    window.lookAgain();
    ASSERT_EQ(asked(), 5U);
    sayKey();
    EXPECT_EQ(painted(), 1U);
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"city: the server answered 503", "city: the room's answer names no page",
                                        "city: no answer in time"}));
}

TEST_F(CityWindowTest, APictureThatIsNotRenewedGoesAndTheKeyIsAskedForAnew) {
    showFirst();
    pass(CityWindow::pace);
    painter.answer(std::unexpected(CityFailure{"exit status 69"}));
    EXPECT_FALSE(state.city);
    pass(CityWindow::pace);
    EXPECT_EQ(asked(), 2U);
    sayKey();
    for (const auto* const wrong : {"<html>", "not a city"}) {
        paint(wrong);
        EXPECT_FALSE(state.city) << wrong;
        pass(CityWindow::pace);
        sayKey();
    }
    files.fault = [](std::string_view) { return FileFault::noSpace; };
    paint("city on a full disk");
    EXPECT_FALSE(state.city);
}

TEST_F(CityWindowTest, IsSilentWhereTheProgramIsNotInstalled) {
    painter.isThere = false;
    enter();
    window.want(berlin);
    window.want(potsdam);
    window.leave();
    enter();
    EXPECT_EQ(painter.timesAsked, 1);
    EXPECT_EQ(asked(), 0U);
    EXPECT_EQ(sleeper.waiting(), 0U);
}

TEST_F(CityWindowTest, IsRenewedWhenTheComputerWakes) {
    showFirst();
    pass(CityWindow::leastPace);
    clock.shift(std::chrono::hours{8}); // while no wait went on
    window.lookAgain();
    EXPECT_EQ(painted(), 2U);
    clock.shift(std::chrono::hours{-9});
    paint("city of evening");
    window.lookAgain();
    pass(CityWindow::pace);
    EXPECT_EQ(painted(), 3U);
}

} // namespace
} // namespace lumaro
