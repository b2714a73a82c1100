// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/Partners.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroRoom/Pairing/PairingService.h"
#include "LumaroRoom/Server/Router.h"
#include "LumaroRoom/Server/ServerConfig.h"
#include "LumaroRoom/Server/ServerHttp.h"
#include "LumaroRoom/Server/Weather.h"
#include "LumaroRoom/Store/StoreQueue.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// What the routes need of the rooms and of what runs on other threads. Answers come on the thread that asked.
class Neighbours {
public:
    Neighbours() = default;
    Neighbours(const Neighbours&) = delete;
    Neighbours& operator=(const Neighbours&) = delete;
    virtual ~Neighbours() = default;

    /// Members of the couple may have changed in the store.
    virtual void refreshMembers(const std::string& coupleId) = 0;
    virtual void online(const std::string& coupleId, std::move_only_function<void(PartnerSet)> then) = 0;
    virtual void weather(CoarsePosition position, WeatherService::Then then) = 0;
    virtual void metrics(std::move_only_function<void(std::string)> then) = 0;
};

/// Answers everything that is asked over HTTP, the sockets' upgrade apart. One for each shard, on its thread; works
/// that it gives to the store keep to what they capture and to the pairing service, which lives there.
class Routes {
public:
    /// All outlive the routes.
    struct Ports {
        StoreQueue& store;
        PairingService& pairing; ///< used on the store's thread alone
        Neighbours& neighbours;
        WallClock& clock;
        Log& log;
    };
    Routes(const ServerConfig& config, Ports ports)
        : limits_(config.limits), windowKey_(config.windowKey), ports_(ports) {}

    /// What the body of a request may hold.
    std::size_t maxBody(std::string_view method, std::string_view path) const;
    /// Whether a request whose body is larger than most may send it: an answer instead when it may not. `request` has
    /// no body yet.
    void admit(const ServerRequest& request, std::move_only_function<void(std::optional<ServerResponse>)> then);
    /// Answers a request.
    void handle(ServerRequest request, Respond respond);

private:
    struct Call {
        RouteMatch match;
        ServerRequest request;
    };
    struct Outcome {
        ServerResponse response;
        std::string changedCouple; ///< whose members may have changed; empty when nobody's have
    };
    using Work = std::move_only_function<StoreResult<Outcome>(Store&)>;
    using DeviceWork = std::move_only_function<StoreResult<Outcome>(Store&, const DeviceRecord& by)>;

    template <class T>
    static StoreResult<Outcome> outcomeOf(PairingResult<T> result, int status, std::string_view coupleId = {});

    static StoreResult<Outcome> cameBy(PairingResult<Joined> joined);

    /// Answers with what the work says, once that is durable.
    void inStore(Work work, Respond respond);
    /// The same for a device of the couple in the path, known by its token.
    void byDevice(const Call& call, DeviceWork work, Respond respond);

    void answer(Call call, Respond respond);
    void answerPairing(const Call& call, Respond respond);
    void createCouple(const Call& call, Respond respond);
    void joinByCode(const Call& call, Respond respond);
    void joinByLink(const Call& call, Respond respond);
    void handoff(const Call& call, Respond respond);
    void takeName(const Call& call, Respond respond);
    void removeDevices(const Call& call, Respond respond);
    void partner(const Call& call, Respond respond);
    void snapshot(const Call& call, Respond respond);
    void putMedia(Call call, Respond respond);
    void getMedia(const Call& call, Respond respond);
    void putCover(Call call, Respond respond);
    void getCover(const Call& call, Respond respond);
    void weather(const Call& call, Respond respond);
    void windowKey(const Call& call, Respond respond);
    void notConfigured(const Call& call, Respond respond);
    void invitePage(const Call& call, Respond respond);
    void health(Respond respond);
    void note(Route route, int status);

    const ServerLimits& limits_;
    const std::optional<WindowKey>& windowKey_;
    Ports ports_;
};

} // namespace lumaro
