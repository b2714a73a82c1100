// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppState.h"
#include "Lumaro/Model/BlockBell.h"
#include "Lumaro/Model/BoardDesk.h"
#include "Lumaro/Model/BoardStore.h"
#include "Lumaro/Model/EditorModel.h"
#include "Lumaro/Model/MediaTransfer.h"
#include "Lumaro/Model/RoomLink.h"
#include "LumaroCore/Pairing/PairingClient.h"
#include "LumaroCore/Services/LoginItem.h"
#include "LumaroCore/Services/NotificationCenter.h"
#include "LumaroCore/Services/SoundPlayer.h"
#include "LumaroCore/Services/SystemSignals.h"
#include "LumaroCore/Services/UserDefaults.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// The board on the desktop, as far as the model steers it.
class WallpaperController {
public:
    WallpaperController() = default;
    WallpaperController(const WallpaperController&) = delete;
    WallpaperController& operator=(const WallpaperController&) = delete;
    virtual ~WallpaperController() = default;

    virtual void setEnabled(bool enabled) = 0;
    /// Something that it shows has changed.
    virtual void refresh() = 0;
};

/// The application's one model: this device's token, board and line to the room, and what people are told of them.
/// Views read `state` and call what follows; everything happens on the main thread.
class AppModel final : public BoardDesk,
                       private RoomLink::Listener,
                       private MediaTransfer::Listener,
                       private SystemListener {
public:
    /// All outlive the model.
    struct Ports {
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
        UUIDSource& ids;
        FileSystem& files;
        HttpClient& http;
        BackgroundRunner& background;
        BackgroundRunner& secretBackground; ///< a keyring may wait there for the person
        RoomLinks& rooms;
        Keyring& keyring;
        SecretStore& secretFile; ///< for people without a keyring who agreed to it
        UserDefaults& defaults;
        NotificationCenter& notifications;
        LoginItem& loginItem;
        ContactCard& contacts;
        SoundPlayer& sounds;
        SystemSignals& signals;
        WallpaperController& wallpaper;
    };
    struct Setup {
        std::string profile; ///< the folder that all files are in
        std::string version; ///< of this program
        std::string keychainService = std::string{lumaro::keychainService};
        std::string defaultServerURL = "https://board.lumaro.app";
        bool offersLaunchAtLogin = true; ///< not where there are no windows to open
    };

    AppModel(Setup setup, Ports ports);
    ~AppModel() override;

    const AppState& state() const { return state_; }
    EditorModel& editor() { return editor_; }
    MediaCache& media() { return media_; }
    /// Called after each change of the state; it may call the model, but not destroy it.
    void onChange(std::function<void()> changed) { changed_ = std::move(changed); }

    /// Once, when the application has finished launching.
    void start();
    /// When it ends: what is not on disk yet goes there.
    void shutdown();
    /// A board of its own line to the room, from the current token.
    void connect();

    /// Adopts a raw token; `then` hears of a token that is none, or a keychain that refuses.
    using Paired = std::move_only_function<void(std::expected<void, std::string>)>;
    void pair(std::string_view token, Paired then);
    void startOurBoard();
    void joinByCode(std::string_view typed);
    /// A link, or a text around one.
    void joinByLink(std::string_view text);
    /// The answer to `PairingPhase::Choosing`.
    void chooseOneself(PartnerID slot);
    void forgetPairingFailure();
    void leaveBoard();
    void retryKeychain();
    /// The answer to `SecretPlace::asking`.
    void keepSecretsInFile(bool agreed);
    void mintCode();
    void resetLinks();
    void releasePartner();
    void setMyDisplayName(std::string_view name);
    void setOnboarding(std::optional<OnboardingStep> step);
    void setShowsBoardOnDesktop(bool shows);
    void becameActive();
    void requestQuickNote(std::optional<std::string> text);

    /// What the partner sees of this person; goes out a quarter of a second after the last change.
    void setPresence(OwnPresence presence);
    /// Stores a picture and sends it to the room; `then` puts up the item that names it.
    void storeMedia(const UUID& id, std::string bytes, MediaTransfer::Stored then);

    std::string serverURL() const;
    /// The room's board as this device has heard of it, and what waits over it.
    const SharedBoard& shared() const { return shared_; }

    // The desk that the editor works at.
    const Board& board() const override { return shared_.shown(); }
    std::expected<UUID, ActFault> act(std::vector<Op> ops) override;

private:
    // Start-up and pairing.
    void readSettings();
    void offerLaunchAtLogin();
    void restoreSession();
    void readToken(int attempt);
    void tokenRead(const ReadResult& read, int attempt);
    void keychainFailed(SecretStatus status, int attempt);
    void sessionNotRestored();
    void restored();
    void askForHandoff();
    void pairAsAsked(std::move_only_function<void()> pairing);
    void adopt(CoupleToken token);
    void forgetBoard();
    void unlink();
    void saveToken();
    void tokenSaved(KeychainStore::Result<void> saved);
    void startedBoard(std::expected<CreatedCouple, PairingFailure> created);
    void joinThrough(JoinDoor door, std::string key);
    void join();
    void joined(std::expected<Joined, PairingFailure> answer);
    void pairingFailed(const PairingFailure& failure, std::string_view what);
    void keepBoardLink(std::optional<BoardLink> link);
    KeychainStore keychain();
    PairingClient pairingClient();
    std::string deviceId();

    // The room.
    void opened(std::vector<PendingBatch> waiting) override;
    void couldNotOpen(const std::string& why) override;
    void received(const ServerMessage& message, std::size_t pending) override;
    void stateChanged(const ConnectionState& state) override;
    void stored(const UUID& batchId, SendOutcome::Way way, std::size_t pending) override;
    void notStored(const UUID& batchId, const SendError& why) override;
    void take(const ServerMessage::Welcome& welcome);
    void take(const ServerMessage::Roster& roster);
    void take(const ServerMessage::Ops& relayed);
    void take(const ServerMessage::Ack& ack);
    void take(const ServerMessage::Presence& presence);
    void take(const ServerMessage::Calendar& calendar);
    void take(const ServerMessage::Thread& thread);
    void take(const ServerMessage::Error& error);
    void meet(PartnerSet online, const std::optional<SlotNames>& names);
    void learnPartnerName(const std::string& name);

    // The board.
    void boardChanged(const Board& before);
    void showBoard();
    void welcomeItems(const std::vector<const BoardItem*>& added);
    void letFall(const Board& before);
    void scheduleExpiry(std::optional<Seconds> after);
    void scheduleNextExpiry();
    void takeExpiredDown();
    void ring(Instant end);
    void sendPresenceSoon();

    // Media and this computer.
    void arrived(const UUID& id) override;
    void wentUp(const UUID& id) override;
    void couldNotGoUp(const UUID& id, MediaFault why) override;
    void wokeFromSleep() override;
    void networkChanged() override;

    PartnerID slot() const { return state_.token ? state_.token->slot : PartnerID::a; }
    Instant now() const;
    void say(std::string notice);
    void announce() const;
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "app", message); }

    Setup setup_;
    Ports ports_;
    AppState state_;
    std::function<void()> changed_;
    SharedBoard shared_;
    std::set<UUID> unstored_; ///< batches that the line has not answered for
    bool isStarter_ = true;   ///< what hangs there is no couple's board
    std::map<UUID, BoardItem> fallingItems_;
    EditorModel editor_;
    BoardStore boardStore_;
    MediaCache media_;
    BlockBell bell_;
    std::unique_ptr<RoomLink> link_;
    std::unique_ptr<MediaTransfer> transfer_;
    /// A pairing that waits for something: a token for its place, a join for the person's choice.
    struct PairingUnderWay;
    std::unique_ptr<PairingUnderWay> pairing_;
    std::move_only_function<void()> asked_; ///< a pairing that waits for the session to be restored

    // What is under way; dropping it ends it.
    std::unique_ptr<SystemSignals::Listening> listening_;
    std::unique_ptr<NotificationCenter::Question> permission_;
    std::unique_ptr<BackgroundRunner::Task> secretTask_;
    std::unique_ptr<BackgroundRunner::Task> linkTask_;
    std::unique_ptr<Sleeper::Wait> restoreWait_;
    std::unique_ptr<Sleeper::Wait> expiryTask_;
    std::unique_ptr<Sleeper::Wait> arrivalClearTask_;
    std::unique_ptr<Sleeper::Wait> greetingTask_;
    std::unique_ptr<Sleeper::Wait> fallTask_;
    std::unique_ptr<Sleeper::Wait> presenceCoalesceTask_;
    PairingClient::Call pairingCall_;
    PairingClient::Call linksCall_;
    PairingClient::Call releaseCall_;
    PairingClient::Call codeCall_;
    PairingClient::Call nameTask_;
    PairingClient::Call leaveCall_;
};

} // namespace lumaro
