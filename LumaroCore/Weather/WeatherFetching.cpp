// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Weather/WeatherFetching.h"

#include "LumaroCore/Support/Overloaded.h"

namespace lumaro {

std::string textOf(const WeatherFault& fault) {
    return std::visit(
        Overloaded{[](const NoWeatherAnswer& it) { return "no answer: " + it.message; },
                   [](const BadWeatherResponse& it) { return "answered with status " + std::to_string(it.status); },
                   [](const MalformedWeather& it) { return "the answer is no weather: " + it.message; },
                   [](const NobodyAnswered&) { return std::string{"nobody answered"}; }},
        fault);
}

} // namespace lumaro
