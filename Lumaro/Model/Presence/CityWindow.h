// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Media/MediaCache.h"
#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/CityWindow/CityPainter.h"
#include "LumaroCore/CityWindow/CityPictureMaker.h"
#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Protocol/WindowKey.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroCore/SyncClient/ReconnectBackoff.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace lumaro {

/// The partner's city as the server's page drew it, by the id that the cache of pictures has it under; none while the
/// painted window hangs.
struct CityState {
    std::optional<UUID> city;
};

/// Keeps a picture of the partner's city for servers that have a page which draws one. Only where the program for that
/// is installed and the card hangs, the room is asked for the page and its key, and the program is run: for one place
/// once an hour, and when the partner has moved by about a kilometre, but never twice within ten minutes. The page
/// learns the place to two decimals of a degree. What comes is made anew before it is kept; a picture that could not
/// be renewed goes, for the light in it is of another hour. On the main thread.
class CityWindow {
public:
    static constexpr Seconds pace{3600};       ///< from one picture of a place to the next
    static constexpr Seconds leastPace{600};   ///< whatever the partner does
    static constexpr double sameCity = 25'000; ///< metres; farther away a picture shows another city

    /// All outlive this.
    struct Ports {
        HttpClient& http;
        CityPainter& painter;
        CityPictureMaker& maker;
        BackgroundRunner& background;
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
    };
    /// How large a picture is asked for, in the page's pixels.
    struct Setup {
        std::int64_t width = 496; ///< twice the glass on the canvas
        std::int64_t height = 340;
        double scale = 2;
    };

    CityWindow(Setup setup, Ports ports, MediaCache& cache, CityState& state, Announcer& announcer)
        : setup_(setup), ports_(ports), cache_(cache), state_(state), announcer_(announcer) {}
    CityWindow(const CityWindow&) = delete;
    CityWindow& operator=(const CityWindow&) = delete;
    ~CityWindow() = default;

    /// The board whose room it is from now on.
    void enter(CoupleEndpoints endpoints, CoupleToken token);
    void leave();
    /// Where the partner is; none while that is not known or no card shows it.
    void want(std::optional<Coordinates> partnerPosition);
    /// The computer was asleep, or the line is back: what is due is done now.
    void lookAgain();

private:
    struct Room {
        CoupleEndpoints endpoints;
        CoupleToken token;
    };
    struct Painted {
        Coordinates position;
        UUID id;
    };

    bool isInstalled();
    void step();
    void ask();
    void heard(const HttpClient::Answer& answer);
    void paint();
    void keep(Coordinates position, std::string png);
    void fail(std::string_view why);
    void show();

    Setup setup_;
    Ports ports_;
    MediaCache& cache_;
    CityState& state_;
    Announcer& announcer_;
    std::optional<bool> isInstalled_; ///< asked once
    std::optional<Room> room_;
    bool hasNoPage_ = false; ///< the room said so
    std::optional<WindowKey> key_;
    std::optional<Coordinates> position_; ///< that is wanted
    std::optional<Coordinates> begun_;    ///< that was painted last, or failed to be
    Instant begunAt_;
    std::optional<Painted> painted_;
    ReconnectBackoff backoff_{.base = Seconds{60}, .cap = pace};
    std::unique_ptr<HttpClient::Call> call_;
    std::unique_ptr<Sleeper::Wait> retry_;
    std::unique_ptr<Sleeper::Wait> rest_; ///< nothing is painted before its end
    std::unique_ptr<Sleeper::Wait> hour_; ///< the same place is not painted before its end
    std::unique_ptr<CityPainter::Run> run_;
    std::unique_ptr<BackgroundRunner::Task> keeping_;
};

} // namespace lumaro
