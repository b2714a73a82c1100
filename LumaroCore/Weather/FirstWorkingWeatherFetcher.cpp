// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Weather/FirstWorkingWeatherFetcher.h"

#include "LumaroCore/Support/Coordinates.h"

#include <cstddef>
#include <span>

namespace lumaro {

class FirstWorkingWeatherFetcher::Round final : public Fetch {
public:
    Round(std::span<const std::unique_ptr<WeatherFetching>> fetchers, Coordinates at, Then then)
        : fetchers_(fetchers), at_(at), then_(std::move(then)) {}

    // `then_` may drop this round: nothing of it is used after the call.
    void ask() {
        if (fetchers_.empty()) return std::exchange(then_, nullptr)(std::unexpected(NobodyAnswered{}));
        auto& fetcher = *fetchers_.front();
        fetchers_ = fetchers_.subspan(1);
        asking_ = fetcher.weather(at_.latitude, at_.longitude, [this](Answer answer) {
            if (!answer) return ask();
            std::exchange(then_, nullptr)(std::move(answer));
        });
    }

private:
    std::span<const std::unique_ptr<WeatherFetching>> fetchers_;
    Coordinates at_;
    Then then_;
    std::unique_ptr<Fetch> asking_;
};

std::unique_ptr<WeatherFetching::Fetch> FirstWorkingWeatherFetcher::weather(double latitude, double longitude,
                                                                            Then then) {
    auto round = std::make_unique<Round>(fetchers_, Coordinates{latitude, longitude}, std::move(then));
    round->ask();
    return round;
}

} // namespace lumaro
