// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Media/MediaCache.h"
#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/Music/CoverMaker.h"
#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/RecentMap.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace lumaro {

/// The covers that can be shown, by the id that the cache of pictures has them under.
struct CoverState {
    std::optional<UUID> ownCover;
    std::optional<UUID> partnerCover;
};

/// Brings covers to the couple's room and from there, and those of the catalogues from them. The token goes to this
/// device's own server alone, whatever a message names; what comes is made anew into a small picture before it is kept,
/// and what is none is not shown.
class Covers {
public:
    static constexpr std::size_t maxPictureBytes = std::size_t{2} * 1024 * 1024;

    /// All outlive this.
    struct Ports {
        HttpClient& http;
        BackgroundRunner& background;
        CoverMaker& maker;
        Log& log;
    };

    Covers(Ports ports, MediaCache& cache, CoverState& state, Announcer& announcer)
        : ports_(ports), cache_(cache), state_(state), announcer_(announcer) {}
    Covers(const Covers&) = delete;
    Covers& operator=(const Covers&) = delete;
    ~Covers() = default;

    /// The board whose room it is from now on.
    void enter(CoupleEndpoints endpoints, CoupleToken token);
    void leave();

    /// What the two listen to, by their covers' URLs.
    void want(const std::optional<std::string>& own, const std::optional<std::string>& partner);
    /// The line is back: what did not come is asked for again.
    void retryNow();

    using Given = std::move_only_function<void(HttpClient::Answer)>;
    /// Sends a cover of this device to the room; null without a board. `then` is never called from within this call.
    [[nodiscard]] std::unique_ptr<HttpClient::Call> give(const Cover& cover, Given then);
    /// Where the partner finds a cover that the room has from this device; none as long as it has not.
    std::optional<std::string> urlOfGiven(const UUID& id) const;
    /// The room has it.
    void given(const Cover& cover);

private:
    struct Room {
        CoupleEndpoints endpoints;
        CoupleToken token;
    };
    /// One that is to be shown, and the steps on its way.
    struct Wanted {
        std::optional<std::string> url;
        std::unique_ptr<HttpClient::Call> call;
        std::unique_ptr<BackgroundRunner::Task> task;
    };

    void want(Wanted& wanted, std::optional<UUID>& shown, const std::optional<std::string>& url);
    void fetch(Wanted& wanted, std::optional<UUID>& shown);
    std::optional<HttpRequest> requestFor(const std::string& url) const;
    void keep(Wanted& wanted, std::optional<UUID>& shown, std::string picture);

    Ports ports_;
    MediaCache& cache_;
    CoverState& state_;
    Announcer& announcer_;
    std::optional<Room> room_;
    /// Covers that the room has from this device; fewer than it keeps.
    RecentMap<UUID, bool> given_{200};
    UUID keptId_; ///< of the one that `keeping_` puts into the cache
    std::unique_ptr<BackgroundRunner::Task> keeping_;
    Wanted own_;
    Wanted partner_;
};

} // namespace lumaro
