// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Media/MediaCache.h"
#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/SyncClient/ReconnectBackoff.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// Brings pictures from the room into the cache and from there to the room, as soon as the line allows.
///
/// What is to come down follows from the board, and what is to go up from the cache's marks, so that a restart takes up
/// both where they were. A picture of one's own goes up before the batch that names it: `putUp` stores it, then its
/// id is held back in the sync client (`SyncClient::holdMedia`) and the item is put up; `wentUp` releases it. After a
/// restart all of `waitingToGoUp` is held before the client connects.
///
/// Used on the main thread. Dropping it leaves what is under way to the next one.
class MediaTransfer {
public:
    static constexpr std::size_t maxDownloads = 2;

    /// All outlive the transfer.
    struct Ports {
        HttpClient& http;
        Sleeper& sleeper;
        BackgroundRunner& background;
        Log& log;
    };

    /// Called on the main thread, never from within a call to the transfer. It may call the transfer from within, but
    /// not destroy it.
    class Listener {
    public:
        Listener() = default;
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener() = default;

        /// A picture of the board is in the cache now.
        virtual void arrived(const UUID& id) = 0;
        /// The room has the picture: the batch that names it may go.
        virtual void wentUp(const UUID& id) = 0;
        /// The picture will never be in the room. Its batch may go, and its item should come down again.
        virtual void couldNotGoUp(const UUID& id, MediaFault why) = 0;
    };

    /// Begins with what waits in the cache. The cache outlives the transfer, and the work of the runner as well.
    MediaTransfer(CoupleEndpoints endpoints, CoupleToken token, MediaCache& cache, Ports ports, Listener& listener);
    MediaTransfer(const MediaTransfer&) = delete;
    MediaTransfer& operator=(const MediaTransfer&) = delete;
    ~MediaTransfer() = default;

    /// Fetches what the board shows and the cache lacks; what an earlier board showed is wanted no longer.
    void want(const Board& board);

    using Stored = std::move_only_function<void(std::expected<void, MediaError>)>;
    /// Stores a picture that is about to be put up and sends it to the room. `then` hears when it is on disk, or why it
    /// is not; the batch that names it is made there.
    void putUp(const UUID& id, std::string bytes, Stored then);
    std::vector<UUID> waitingToGoUp() const { return cache_.waitingFor(endpoints_.coupleId); }

    /// The line is back, or the token is known to be good: what waits tries at once.
    void retryNow();

private:
    struct Step {
        std::unique_ptr<HttpClient::Call> call;
        std::unique_ptr<BackgroundRunner::Task> task;
    };
    struct Upload {
        UUID id;
        Step step;
    };
    /// A picture that the room does not have, or not as a picture, is asked for again after ever longer waits.
    struct Later {
        ReconnectBackoff backoff{.base = Seconds{60}, .cap = Seconds{3600}};
        std::unique_ptr<Sleeper::Wait> wait;
    };

    void goOn();
    void tryLater(std::string_view why);
    void tokenRefused();

    void startDownload(const UUID& id);
    void downloaded(UUID id, HttpClient::Answer answer);
    void keep(const UUID& id, std::string bytes);
    void arrived(UUID id, const std::expected<void, MediaError>& kept);
    void setAside(const UUID& id, std::string_view why);

    void startUpload();
    void send(std::string bytes);
    void uploaded(const HttpClient::Answer& answer);
    void uploadAgain(std::string_view why);
    void finishUpload(std::optional<MediaFault> fault);

    HttpRequest request(std::string method, const UUID& id) const;
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "media", message); }

    CoupleEndpoints endpoints_;
    CoupleToken token_;
    MediaCache& cache_;
    Ports ports_;
    Listener& listener_;

    std::vector<UUID> wanted_;
    std::deque<UUID> uploads_;
    bool isRefused_ = false;
    ReconnectBackoff backoff_;

    // What is under way.
    std::map<UUID, Step> downloads_;
    std::map<UUID, Later> later_;
    std::optional<Upload> upload_;
    std::map<UUID, std::unique_ptr<BackgroundRunner::Task>> storing_;
    std::unique_ptr<Sleeper::Wait> retry_;
};

} // namespace lumaro
