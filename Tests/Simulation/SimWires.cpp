// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimWires.h"

#include <utility>

namespace lumaro::simulation {
namespace {

HttpClient::Answer noAnswer() {
    return std::unexpected(HttpFailure{"no answer"});
}

} // namespace

struct SimHttp::State {
    std::move_only_function<void(Answer)> then;
    std::unique_ptr<Sleeper::Wait> way;
    std::unique_ptr<Sleeper::Wait> patience;
};

struct SimHttp::Request final : Call {
    std::shared_ptr<State> state;
};

std::unique_ptr<HttpClient::Call> SimHttp::send(HttpRequest request, std::move_only_function<void(Answer)> then) {
    auto call = std::make_unique<Request>();
    call->state = std::make_shared<State>();
    const auto place = std::weak_ptr{call->state};
    call->state->then = std::move(then);
    call->state->patience = time_.wait(request.timeout, [place] { finish(place, noAnswer()); });
    const bool isForBoard = request.url.ends_with("/snapshot");
    if (isForBoard) latest_ = call->state;
    if (network_.weather(device_).reach != Weather::Reach::open) {
        bring(place, noAnswer());
    } else if (!isForBoard) {
        bring(place, weatherFrom(request.url));
    } else {
        call->state->way = time_.wait(network_.delay(device_), [this, place, request = std::move(request)] {
            server_.snapshot(request, [this, place](Answer answer) { bring(place, std::move(answer)); });
        });
    }
    return call;
}

void SimHttp::turnWeather(samples::Random& random) {
    roomHasWeather_ = samples::chance(random, 0.5);
    serviceHasWeather_ = samples::chance(random, 0.5);
}

HttpClient::Answer SimHttp::weatherFrom(const std::string& url) const {
    if (roomHasWeather_ && url.contains("/weather?")) {
        return HttpResponse{200, R"({"tempC":11,"code":3,"isDay":true,"sampledAt":1790000000000})"};
    }
    if (serviceHasWeather_ && url.contains("/v1/forecast?")) {
        return HttpResponse{200, R"({"current":{"temperature_2m":12,"is_day":0,"weather_code":71},"daily":{}})"};
    }
    return HttpResponse{.status = 404, .body = {}};
}

void SimHttp::bring(const std::weak_ptr<State>& place, Answer answer) {
    const auto state = place.lock();
    if (!state) return;
    state->way = time_.wait(network_.delay(device_),
                            [place, answer = std::move(answer)]() mutable { finish(place, std::move(answer)); });
}

void SimHttp::finish(const std::weak_ptr<State>& place, Answer answer) {
    const auto state = place.lock();
    if (!state || !state->then) return;
    auto then = std::move(state->then);
    state->way.reset();
    state->patience.reset();
    then(std::move(answer));
}

} // namespace lumaro::simulation
