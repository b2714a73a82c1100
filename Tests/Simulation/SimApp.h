// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/Model/Room/DirectRoomLinks.h"
#include "Lumaro/Offline/QuietServices.h"
#include "Tests/Fakes/FakeDesktop.h"
#include "Tests/Fakes/FakeNotifications.h"
#include "Tests/Fakes/FakePlaces.h"
#include "Tests/Fakes/FakePlayers.h"
#include "Tests/Fakes/ManualBackground.h"
#include "Tests/Simulation/SimDevice.h"
#include "Tests/Simulation/SimProgram.h"
#include "Tests/Simulation/SimWires.h"

#include <memory>

namespace lumaro::simulation {

/// The whole application without its windows, from the keyring to the editor. Stands between it and its line to the
/// room, and sees what goes through.
class SimApp final : public SimProgram, private RoomLinks, private RoomLink::Listener {
public:
    explicit SimApp(SimDevice& device);
    ~SimApp() override;

    SyncClient* client() override;
    const SharedBoard& board() const override { return app_->liveBoard().shared(); }
    PartnerID slot() const override;
    bool knows(const Members& members) const override;
    bool waitsForAnAnswer() const override { return http_.isAsking(); }

    void act(std::vector<Op> ops) override;
    void handle(samples::Random& random) override;
    void takeBack(samples::Random& random) override;
    void sendPresence() override { app_->presence().setActivity(Activity::editing); }
    void changeMusic(samples::Random& random) override;
    std::optional<std::string> song() const override { return song_; }
    bool sharesMusic() const override { return app_->state().musicConsent == Consent::yes; }
    std::optional<std::string> partnersSong() const override;
    void changePlace(samples::Random& random) override;
    std::optional<Here> place() const override { return app_->state().ownPresence.here; }
    std::optional<Here> partnersPlace() const override { return app_->state().presence.here; }
    std::string faultOfPlace() const override;
    bool hasLiveCards() const override { return true; }
    void retryNow() override { signals_.changeNetwork(); }
    void reconnect() override { app_->connect(); }
    void wake() override { signals_.wakeUp(); }
    void quit() override;

    void check() override;
    void checkAtRest() override;

private:
    class Line;
    class Background;
    struct NoWallpaper;

    std::expected<std::unique_ptr<RoomLink>, std::string> open(Address address, RoomLink::Listener& listener) override;

    void opened(std::vector<PendingBatch> waiting) override;
    void couldNotOpen(const std::string& why) override { listener_->couldNotOpen(why); }
    void received(const ServerMessage& message, std::size_t pending) override;
    void stateChanged(const ConnectionState& state) override;
    void stored(const UUID& batchId, SendOutcome::Way way, std::size_t pending) override;
    void notStored(const UUID& batchId, const SendError& why) override;

    bool actAtOnce(std::vector<Op> ops);

    SimDevice& device_;
    SimTransport transport_;
    SimHttp http_;
    Silence silence_;
    MemorySecretStore noFile_;
    FakeNotifications notifications_;
    FakeLoginItem loginItem_;
    FakeContactCard contacts_;
    RecordingSounds sounds_;
    ManualSystemSignals signals_;
    FakeDownloadOrigin origin_;
    FakePlayers players_;
    std::optional<std::string> song_; ///< that plays or is paused
    FakeCoverMaker coverMaker_;
    QuietCity city_;
    FakePositions positions_;
    PositionSource::Answer truth_; ///< where the computer is, and whether it says so
    FakeGeocoder geocoder_;
    FakeZone zone_;
    QuietHomeRoom homeRoom_;
    QuietNearby nearby_;
    std::unique_ptr<NoWallpaper> wallpaper_;
    std::unique_ptr<Background> background_;
    std::unique_ptr<AppModel> app_;
    RoomLink::Listener* listener_ = nullptr;
    Line* line_ = nullptr;  ///< null while there is none
    bool isOpened_ = false; ///< the application has taken over what waits
};

} // namespace lumaro::simulation
