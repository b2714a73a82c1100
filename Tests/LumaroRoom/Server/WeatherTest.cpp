// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Weather.h"

#include "Tests/LumaroRoom/Server/ServerFixture.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace lumaro {
namespace {

const std::string forecast =
    R"({"current":{"time":"2026-05-01T12:00","temperature_2m":11.5,"apparent_temperature":9,"is_day":1,"weather_code":3,)"
    R"("cloud_cover_low":120,"cloud_cover_mid":100,"cloud_cover_high":-1,"visibility":24140,"wind_direction_10m":360,)"
    R"("wind_speed_10m":500.1},"daily":{"temperature_2m_max":[14.2],"temperature_2m_min":[]}})";

TEST(WeatherTest, AForecastIsReadWithinItsBounds) {
    const auto weather = weatherIn(forecast, Instant{});
    ASSERT_TRUE(weather);
    EXPECT_EQ(*weather, (Weather{.tempC = 11.5,
                                 .feelsC = 9,
                                 .code = 3,
                                 .isDay = true,
                                 .hiC = 14.2,
                                 .loC = {},
                                 .cloudLow = {},
                                 .cloudMid = 100,
                                 .cloudHigh = {},
                                 .visibilityM = 24140,
                                 .windDeg = 360,
                                 .windKmh = {},
                                 .sampledAt = {}}));
    for (const auto* text : {"", "{}", R"({"current":{},"daily":{}})", "<html>"})
        EXPECT_FALSE(weatherIn(text, {})) << text;
}

TEST(WeatherTest, PositionsAreRoundedAwayFromZero) {
    for (const auto& [latitude, longitude, query] :
         {std::tuple{"52.5163", "13.3777", "latitude=52.52&longitude=13.38&"},
          {"-0.005", "0.004", "latitude=-0.01&longitude=0&"},
          {"-90", "180", "latitude=-90&longitude=180&"}}) {
        const auto position = CoarsePosition::parse(latitude, longitude);
        ASSERT_TRUE(position);
        EXPECT_NE(forecastURL("http://up", *position).find(query), std::string::npos) << forecastURL("", *position);
    }
    for (const auto& [latitude, longitude] :
         {std::pair{"90.01", "0"}, {"0", "-180.1"}, {"nan", "0"}, {"", "0"}, {"1x", "0"}, {"1e400", "0"}}) {
        EXPECT_FALSE(CoarsePosition::parse(latitude, longitude)) << latitude << "," << longitude;
    }
}

// A forecast service that answers one request at a time, when the test says so.
class Upstream {
public:
    Upstream() : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* const place = reinterpret_cast<sockaddr*>(&address);
        ::bind(listener_, place, sizeof address);
        ::listen(listener_, 8);
        socklen_t size = sizeof address;
        ::getsockname(listener_, place, &size);
        port_ = ntohs(address.sin_port);
    }
    Upstream(const Upstream&) = delete;
    Upstream& operator=(const Upstream&) = delete;
    ~Upstream() { ::close(listener_); }

    std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }
    /// The request line of the next request, which is answered with this.
    std::string answer(const std::string& body) {
        const int connection = ::accept(listener_, nullptr, nullptr);
        std::string request(4096, '\0');
        request.resize(static_cast<std::size_t>(::recv(connection, request.data(), request.size(), 0)));
        const auto text = "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
        ::send(connection, text.data(), text.size(), MSG_NOSIGNAL);
        ::close(connection);
        return request.substr(0, request.find("\r\n"));
    }

private:
    int listener_;
    std::uint16_t port_ = 0;
};

class WeatherRouteTest : public ServerFixture {
protected:
    WeatherRouteTest() { config.weatherUpstream = upstream.url(); }

    Upstream upstream;
};

TEST_F(WeatherRouteTest, AllWhoAskForAPlaceShareOneAnswer) {
    const auto couple = found();
    const auto home = "/couples/" + couple.coupleId;
    std::vector<Line> asking;
    for (const auto* query : {"?lat=52.5163&lon=13.3777", "?lon=13.381&lat=52.519", "?lat=52.52&lon=13.38"}) {
        asking.emplace_back(port()).write(requestText({.target = home + "/weather" + query, .token = couple.token}));
    }
    EXPECT_NE(upstream.answer(forecast).find("latitude=52.52&longitude=13.38&"), std::string::npos);
    for (auto& line : asking) EXPECT_NE(readReply(line).body.find(R"("tempC":11.5)"), std::string::npos);
    EXPECT_EQ(get(home + "/weather?lat=52.52&lon=13.38", couple.token).status, 200) << "from memory, nobody answers";
}

} // namespace
} // namespace lumaro
