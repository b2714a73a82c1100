// SPDX-License-Identifier: Apache-2.0
#pragma once

// What one person lets the other see of themselves: values that travel in messages.

#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Hash.h"
#include "LumaroCore/Support/Instant.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace lumaro {

/// What a device is being used for.
enum class Activity : std::uint8_t { idle, editing };

constexpr std::array<std::string_view, 2> namesOf(Activity) {
    return {"idle", "editing"};
}

enum class MusicSource : std::uint8_t { spotify, appleMusic };

constexpr std::array<std::string_view, 2> namesOf(MusicSource) {
    return {"spotify", "appleMusic"};
}

/// What plays on a device. The position of a playing track moves on from `progressMs` since `sampledAt`.
struct NowPlaying {
    bool isPlaying = false;
    std::int64_t progressMs = 0;
    Instant sampledAt;
    std::int64_t durationMs = 0;
    std::string title;
    std::string artist;
    std::optional<std::string> artworkURL;
    MusicSource source = MusicSource::spotify;

    static constexpr auto fields() {
        return std::tuple{Field{"isPlaying", &NowPlaying::isPlaying},   Field{"progressMs", &NowPlaying::progressMs},
                          Field{"sampledAt", &NowPlaying::sampledAt},   Field{"durationMs", &NowPlaying::durationMs},
                          Field{"title", &NowPlaying::title},           Field{"artist", &NowPlaying::artist},
                          Field{"artworkURL", &NowPlaying::artworkURL}, Field{"source", &NowPlaying::source}};
    }
    bool operator==(const NowPlaying&) const = default;
};

/// The weather at a rounded position. Temperatures in degrees Celsius, covers in percent.
struct Weather {
    double tempC = 0;
    std::optional<double> feelsC;
    std::int64_t code = 0; ///< WMO weather interpretation code
    bool isDay = true;
    std::optional<double> hiC;
    std::optional<double> loC;
    std::optional<double> cloudLow;
    std::optional<double> cloudMid;
    std::optional<double> cloudHigh;
    std::optional<double> visibilityM;
    std::optional<double> windDeg;
    std::optional<double> windKmh;
    Instant sampledAt;

    static constexpr auto fields() {
        return std::tuple{Field{"tempC", &Weather::tempC},
                          Field{"feelsC", &Weather::feelsC},
                          Field{"code", &Weather::code},
                          Field{"isDay", &Weather::isDay},
                          Field{"hiC", &Weather::hiC},
                          Field{"loC", &Weather::loC},
                          Field{"cloudLow", &Weather::cloudLow},
                          Field{"cloudMid", &Weather::cloudMid},
                          Field{"cloudHigh", &Weather::cloudHigh},
                          Field{"visibilityM", &Weather::visibilityM},
                          Field{"windDeg", &Weather::windDeg},
                          Field{"windKmh", &Weather::windKmh},
                          Field{"sampledAt", &Weather::sampledAt}};
    }
    bool operator==(const Weather&) const = default;
};

/// How coarse a shared position is.
enum class HerePrecision : std::uint8_t {
    neighbourhood, ///< two decimals of a degree
    block,         ///< three decimals
};

constexpr std::array<std::string_view, 2> namesOf(HerePrecision) {
    return {"neighbourhood", "block"};
}

/// Roughly where a person is. The position is coarsened before it gets here.
struct Here {
    double lat = 0;
    double lon = 0;
    std::string label; ///< the place's name for people
    std::optional<std::string> city;
    std::string tz; ///< IANA name of the device's time zone
    HerePrecision precision = HerePrecision::neighbourhood;
    Instant since;     ///< of the stay at this spot
    Instant sampledAt; ///< of the position
    std::optional<Weather> weather;

    static constexpr auto fields() {
        return std::tuple{Field{"lat", &Here::lat},        Field{"lon", &Here::lon},
                          Field{"label", &Here::label},    Field{"city", &Here::city},
                          Field{"tz", &Here::tz},          Field{"precision", &Here::precision},
                          Field{"since", &Here::since},    Field{"sampledAt", &Here::sampledAt},
                          Field{"weather", &Here::weather}};
    }
    bool operator==(const Here&) const = default;
};

enum class CalendarStatus : std::uint8_t { notConnected, pending, connected, failed };

constexpr std::array<std::string_view, 4> namesOf(CalendarStatus) {
    return {"notConnected", "pending", "connected", "failed"};
}

struct CalendarEvent {
    std::string title;
    Instant start;
    Instant end;
    bool allDay = false;

    static constexpr auto fields() {
        return std::tuple{Field{"title", &CalendarEvent::title}, Field{"start", &CalendarEvent::start},
                          Field{"end", &CalendarEvent::end}, Field{"allDay", &CalendarEvent::allDay}};
    }
    bool operator==(const CalendarEvent&) const = default;
};

/// One person's day.
struct CalendarDay {
    std::string date; ///< ISO 8601, `2026-05-01`, in that person's time zone
    std::vector<CalendarEvent> events;
    Instant fetchedAt;

    static constexpr auto fields() {
        return std::tuple{Field{"date", &CalendarDay::date}, Field{"events", &CalendarDay::events},
                          Field{"fetchedAt", &CalendarDay::fetchedAt}};
    }
    bool operator==(const CalendarDay&) const = default;
};

} // namespace lumaro
