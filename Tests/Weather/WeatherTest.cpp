// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/Wire.h"
#include "LumaroCore/Weather/FirstWorkingWeatherFetcher.h"
#include "LumaroCore/Weather/OpenMeteo.h"
#include "LumaroCore/Weather/WorkerWeatherFetcher.h"
#include "Tests/Fakes/ManualClock.h"
#include "Tests/Fakes/ScriptedHttpClient.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace lumaro {
namespace {

constexpr Instant sampled{std::chrono::seconds{1'790'000'000}};

std::string golden(std::string_view name) {
    std::ifstream file{std::string{LUMARO_GOLDEN_DIR} + "/" + std::string{name}};
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string withCurrent(std::string_view readings, std::string_view daily = "") {
    return R"({"current":{"temperature_2m":11.5,"is_day":1,"weather_code":3,)" + std::string{readings} +
           R"("interval":900},"daily":{)" + std::string{daily} + "}}";
}

std::string read(std::string_view body) {
    const auto weather = OpenMeteo::weatherIn(body, sampled);
    return weather ? *Wire::encode(*weather) : "malformed at " + weather.error().message;
}

TEST(OpenMeteoTest, AskedForWithThePlaceRoundedAndEveryReadingByName) {
    ManualSleeper sleeper;
    ManualClock clock{sleeper, sampled};
    ScriptedHttpClient http;
    const OpenMeteoFetcher fetcher{std::string{OpenMeteo::publicService}, http, clock};
    EXPECT_EQ(fetcher.url(52.5163, 13.3777),
              "https://api.open-meteo.com/v1/forecast?latitude=52.52&longitude=13.38&current=temperature_2m,"
              "apparent_temperature,is_day,weather_code,cloud_cover_low,cloud_cover_mid,cloud_cover_high,visibility,"
              "wind_direction_10m,wind_speed_10m&daily=temperature_2m_max,temperature_2m_min&timezone=auto"
              "&forecast_days=1");
    for (const auto& [at, query] : {std::pair{Coordinates{-0.005, 0.004}, "latitude=-0.01&longitude=0&"},
                                    {{-90, 180}, "latitude=-90&longitude=180&"},
                                    {{0.01, -179.996}, "latitude=0.01&longitude=-180&"}}) {
        const auto url = fetcher.url(at.latitude, at.longitude);
        EXPECT_NE(url.find(query), std::string::npos) << url;
    }
}

TEST(OpenMeteoTest, BodiesAsTheyComeAreReadAndWhatIsMissingOrOutOfBoundsIsLeftOut) {
    EXPECT_EQ(read(golden("forecast-lisbon.json")),
              R"({"tempC":21.4,"feelsC":20,"code":3,"isDay":true,"hiC":22,"loC":13.9,"cloudLow":12,"cloudMid":0,)"
              R"("cloudHigh":100,"visibilityM":61023,"windDeg":338,"windKmh":17.6,"sampledAt":1790000000000})");
    EXPECT_EQ(
        read(golden("forecast-nulls.json")),
        R"({"tempC":-61,"code":75,"isDay":false,"loC":-64.2,"windDeg":360,"windKmh":0,"sampledAt":1790000000000})");
    constexpr std::string_view bare = R"({"tempC":11.5,"code":3,"isDay":true,"sampledAt":1790000000000})";
    for (const auto* readings :
         {R"("cloud_cover_low":120,)", R"("cloud_cover_mid":-1,)", R"("cloud_cover_high":100.01,)",
          R"("visibility":1000000.5,)", R"("wind_direction_10m":361,)", R"("wind_speed_10m":500.1,)",
          R"("apparent_temperature":null,)", R"("tomorrow":[{}],)"}) {
        EXPECT_EQ(read(withCurrent(readings)), bare) << readings;
    }
    EXPECT_EQ(read(withCurrent("", R"("temperature_2m_max":[],"temperature_2m_min":null)")), bare);
    EXPECT_NE(read(withCurrent(R"("wind_speed_10m":500,)")).find(R"("windKmh":500,)"), std::string::npos);
    EXPECT_NE(read(withCurrent(R"("visibility":1000000,)")).find(R"("visibilityM":1000000,)"), std::string::npos);
}

TEST(OpenMeteoTest, WhatIsNoForecastIsMalformedWithItsPlace) {
    for (const auto& [body, place] : std::initializer_list<std::pair<std::string, const char*>>{
             {"", "$"},
             {"<html>bad gateway</html>", "$"},
             {"[]", "$"},
             {"{}", "$.current"},
             {R"({"error":true,"reason":"Minutely API request limit exceeded."})", "$.current"},
             {R"({"current":{},"daily":{}})", "$.current.temperature_2m"},
             {R"({"current":{"temperature_2m":1,"is_day":1,"weather_code":3}})", "$.daily"},
             {R"({"current":{"temperature_2m":null,"is_day":1,"weather_code":3},"daily":{}})",
              "$.current.temperature_2m"},
             {R"({"current":{"temperature_2m":1,"is_day":1,"weather_code":null},"daily":{}})",
              "$.current.weather_code"},
             {R"({"current":{"temperature_2m":1,"is_day":1,"weather_code":3.5},"daily":{}})", "$.current.weather_code"},
             {R"({"current":{"temperature_2m":nan,"is_day":1,"weather_code":3},"daily":{}})", "$"},
             {R"({"current":{"temperature_2m":1e999,"is_day":1,"weather_code":3},"daily":{}})", "$"},
             {R"({"current":{"temperature_2m":1,"is_day":1,"weather_code":3},"daily":{"temperature_2m_max":[)", "$"}}) {
        const auto weather = OpenMeteo::weatherIn(body, sampled);
        ASSERT_FALSE(weather) << body;
        EXPECT_TRUE(weather.error().message.starts_with(place)) << body << "\n" << weather.error().message;
    }
}

struct WeatherFetchersTest : testing::Test {
    std::string asked() {
        outcome.clear();
        fetch = both.weather(52.5163, 13.3777, [this](const WeatherFetching::Answer& answer) {
            outcome = answer ? *Wire::encode(*answer) : textOf(answer.error());
            fetch.reset();
        });
        return http.requests.back().url;
    }
    static std::vector<std::unique_ptr<WeatherFetching>> fetchers(HttpClient& http, WallClock& clock) {
        std::vector<std::unique_ptr<WeatherFetching>> both;
        both.push_back(std::make_unique<WorkerWeatherFetcher>(CoupleEndpoints{"https://board.example/api", "q3m7xk2p"},
                                                              "Bearer secret", http));
        both.push_back(std::make_unique<OpenMeteoFetcher>("https://forecasts.example", http, clock));
        return both;
    }

    ManualSleeper sleeper;
    ManualClock clock{sleeper, sampled};
    ScriptedHttpClient http;
    FirstWorkingWeatherFetcher both{fetchers(http, clock)};
    std::unique_ptr<WeatherFetching::Fetch> fetch;
    std::string outcome;
};

TEST_F(WeatherFetchersTest, TheBoardsServerIsAskedFirstWithItsToken) {
    EXPECT_EQ(asked(), "https://board.example/api/couples/q3m7xk2p/weather?lat=52.52&lon=13.38");
    const auto& request = http.requests.back();
    EXPECT_EQ(request.headers.front(), (HttpHeader{"authorization", "Bearer secret"}));
    EXPECT_EQ(request.timeout, Seconds{60});
    http.answer(HttpResponse{200, R"({"tempC":4,"code":71,"isDay":false,"sampledAt":1789999999000,"later":1})"});
    EXPECT_EQ(outcome, R"({"tempC":4,"code":71,"isDay":false,"sampledAt":1789999999000})");
    EXPECT_EQ(http.requests.size(), 1U);
}

TEST_F(WeatherFetchersTest, WhereItHasNoneTheForecastServiceIsAskedWithoutTheToken) {
    const HttpClient::Answer failures[] = {HttpResponse{503, ""}, HttpResponse{200, "<html>"},
                                           HttpResponse{304, golden("forecast-lisbon.json")},
                                           std::unexpected(HttpFailure{"no route"})};
    for (const auto& failure : failures) {
        asked();
        http.answer(failure);
        EXPECT_TRUE(http.requests.back().url.starts_with("https://forecasts.example/v1/forecast?latitude=52.52&"));
        for (const auto& header : http.requests.back().headers) EXPECT_NE(header.name, "authorization");
        http.answer(HttpResponse{200, golden("forecast-lisbon.json")});
        EXPECT_NE(outcome.find(R"("tempC":21.4)"), std::string::npos) << outcome;
    }
    asked();
    http.answer(HttpResponse{503, ""});
    http.answer(HttpResponse{429, R"({"error":true})"});
    EXPECT_EQ(outcome, "nobody answered");
    FirstWorkingWeatherFetcher none{{}};
    fetch = none.weather(0, 0, [this](const auto& answer) { outcome = textOf(answer.error()); });
    EXPECT_EQ(outcome, "nobody answered");
    asked();
    fetch.reset();
    EXPECT_EQ(http.open(), 0U);
}

} // namespace
} // namespace lumaro
