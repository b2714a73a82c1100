// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppPorts.h"
#include "Lumaro/Model/AppState.h"
#include "Lumaro/Model/Editor/EditorModel.h"
#include "Lumaro/Model/Editor/NoteDrafts.h"
#include "Lumaro/Model/Presence/Feeds.h"
#include "LumaroCore/Services/SystemSignals.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// The application's one model: it owns what lives for the whole run, starts it in its order, and says which part hears
/// of what. What the parts do is theirs. Views read `state`, hear what changed of it through `onNews`, and call the
/// parts; everything happens on the main thread.
class AppModel final : private Membership::Listener, private Connection::Listener, private SystemListener {
public:
    using Ports = AppPorts;
    struct Setup {
        std::string profile; ///< the folder that all files are in
        std::string version; ///< of this program
        std::string keychainService = std::string{lumaro::keychainService};
        std::string defaultServerURL{};  ///< of the build; empty: it has none
        bool offersLaunchAtLogin = true; ///< not where there are no windows to open
        ArtworkFinder::Setup artwork{};
    };

    AppModel(Setup setup, Ports ports);
    ~AppModel() override;

    const AppState& state() const { return state_; }
    /// Called once for each message or act that changed the state, when the state is whole.
    void onNews(Announcer::Listener listener) { announcer_.onNews(std::move(listener)); }

    // The parts.

    Membership& membership() { return membership_; }
    Pairing& pairing() { return pairing_; }
    BoardHome& home() { return home_; }
    Invitations& invitations() { return invitations_; }
    People& people() { return people_; }
    LiveBoard& liveBoard() { return board_; }
    EditorModel& editor() { return editor_; }
    PresenceSender& presence() { return feeds_.presence(); }
    MusicSharing& music() { return feeds_.music(); }
    PlaceSharing& place() { return feeds_.place(); }
    HoursSharing& hours() { return feeds_.hours(); }
    SeenSharing& seen() { return feeds_.seen(); }
    DesktopSwitch& desktop() { return desktop_; }
    MediaCache& media() { return media_; }
    NoteDrafts& drafts() { return drafts_; }

    const Board& board() const { return board_.board(); }

    // What takes more than one of them.

    /// Once, when the application has finished launching.
    void start();
    /// When it ends: what is not on disk yet goes there.
    void shutdown();
    /// A line to the room from the current token, in place of the one that was.
    void connect();
    /// Adopts a raw token; `then` hears of a token that is none, or a keychain that refuses.
    void pair(std::string_view token, Membership::Kept then);
    void leaveBoard();
    /// Takes the partner's devices off the board; its links and codes end with that.
    void releasePartner();
    /// The answer to `SecretPlace::asking`.
    void keepSecretsInFile(bool agreed);
    void retryKeychain() { membership_.retry(); }
    const std::string& serverURL() const { return membership_.serverURL(); }
    /// The person has turned to the application.
    void becameActive();
    /// The board's window is the one that the person has before them, or no longer.
    void setLooking(bool isLooking);
    /// Opens the quick note, with a text to begin with.
    void requestQuickNote(std::optional<std::string> text) { announcer_.askForQuickNote(std::move(text)); }
    /// Stores a picture and sends it to the room; `then` puts up the item that names it.
    void storeMedia(const UUID& id, std::string bytes, MediaTransfer::Stored then);

private:
    void cameOntoBoard(bool isAnotherBoard) override;
    void foundLeftBoard(const CoupleToken& token) override;
    void sessionRestored(bool isNew) override;

    void opened(std::vector<PendingBatch> waiting) override { board_.opened(std::move(waiting)); }
    void received(const ServerMessage& message) override;
    void refused() override { feeds_.partner().hide(); }
    void stored(const UUID& batchId) override { board_.stored(batchId); }
    void notStored(const UUID& batchId) override;
    void couldNotGoUp(const UUID& mediaId, MediaFault why) override;

    void take(const ServerMessage::Welcome& welcome);
    void take(const ServerMessage::Roster& roster);
    void meet(PartnerSet paired, const std::optional<SlotNames>& names);
    void take(const ServerMessage::Ops& relayed) { board_.take(relayed); }
    void take(const ServerMessage::Ack& ack) { board_.take(ack); }
    void take(const ServerMessage::Presence& presence);
    void take(const ServerMessage::Calendar& calendar) { feeds_.partner().take(calendar); }
    void take(const ServerMessage::Thread& thread) { board_.take(thread); }
    void take(const ServerMessage::Error&) {} // the connection's

    void wokeFromSleep() override;
    void networkChanged() override;

    void forgetBoard();
    void answer(const NewsAnswer& news);
    void endBlock(const NewsAnswer& news);
    void completeNews(const AppNews& news);
    PartnerID slot() const { return state_.token ? state_.token->slot : PartnerID::a; }
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "app", message); }

    Setup setup_;
    Ports ports_;
    AppState state_;
    Announcer announcer_;
    MediaCache media_;
    Permissions permissions_;
    DesktopSwitch desktop_;
    Membership membership_;
    PairingClients service_;
    Invitations invitations_;
    People people_;
    Leaving leaving_;
    Pairing pairing_;
    BoardHome home_;
    Connection connection_;
    LiveBoard board_;
    NoteDrafts drafts_;
    EditorModel editor_;
    Feeds feeds_;
    std::unique_ptr<SystemSignals::Listening> listening_;
};

} // namespace lumaro
