// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/AppModel.h"

#include "LumaroCore/Presence/Pomodoro.h"

#include <utility>
#include <variant>

namespace lumaro {

AppModel::AppModel(Setup setup, Ports ports)
    : setup_(std::move(setup)), ports_(ports), media_(ports.files, setup_.profile + "/media"),
      permissions_({ports.contacts, ports.notifications}, state_, announcer_),
      desktop_(ports.defaults, ports.wallpaper, state_, announcer_),
      membership_({setup_.keychainService, setup_.defaultServerURL},
                  {.sleeper = ports.sleeper,
                   .log = ports.log,
                   .ids = ports.ids,
                   .background = ports.secretBackground,
                   .keyring = ports.keyring,
                   .secretFile = ports.secretFile,
                   .defaults = ports.defaults},
                  state_, announcer_, *this),
      service_(setup_.version, ports.http, ports.log, membership_),
      invitations_({ports.secretBackground, ports.log}, state_,
                   {membership_, state_, state_.myDisplayName, service_, announcer_}),
      people_({ports.defaults, ports.contacts, ports.log}, state_, service_, announcer_),
      leaving_({ports.secretBackground, ports.log}, membership_, service_),
      pairing_({.sleeper = ports.sleeper,
                .clock = ports.clock,
                .log = ports.log,
                .background = ports.background,
                .defaults = ports.defaults,
                .origin = ports.origin},
               state_,
               {.membership = membership_,
                .who = state_,
                .people = people_,
                .names = state_,
                .invitations = invitations_,
                .invitation = state_,
                .leaving = leaving_,
                .service = service_,
                .announcer = announcer_,
                .itemsOnBoard = [this] { return board().items.size(); },
                .serversNearby = [this] { return home_.serversNearby(); }}),
      home_({.sleeper = ports.sleeper,
             .http = ports.http,
             .log = ports.log,
             .defaults = ports.defaults,
             .homeRoom = ports.homeRoom,
             .nearby = ports.nearby},
            state_,
            {.membership = membership_,
             .who = state_,
             .myName = state_.myDisplayName,
             .pairing = pairing_,
             .announcer = announcer_}),
      connection_({ports.sleeper, ports.log, ports.http, ports.background, ports.rooms}, state_, media_, announcer_,
                  *this),
      board_(setup_.profile + "/boards",
             {.sleeper = ports.sleeper,
              .clock = ports.clock,
              .log = ports.log,
              .ids = ports.ids,
              .files = ports.files,
              .background = ports.background,
              .defaults = ports.defaults,
              .notifications = ports.notifications,
              .sounds = ports.sounds},
             state_,
             {.connection = connection_,
              .media = media_,
              .announcer = announcer_,
              .changedByOthers = [this] { editor_.boardChanged(); },
              .answered = [this](const NewsAnswer& news) { answer(news); },
              .partnerName = state_.partnerDisplayName}),
      drafts_(setup_.profile + "/drafts", {ports.files, ports.sleeper, ports.background, ports.log}),
      editor_({board_, ports.ids, ports.clock, ports.sleeper, announcer_}),
      feeds_(setup_.artwork,
             {.sleeper = ports.sleeper,
              .clock = ports.clock,
              .log = ports.log,
              .http = ports.http,
              .background = ports.background,
              .defaults = ports.defaults,
              .players = ports.players,
              .coverMaker = ports.coverMaker,
              .cityPainter = ports.cityPainter,
              .cityMaker = ports.cityMaker,
              .positions = ports.positions,
              .geocoder = ports.geocoder,
              .zone = ports.zone},
             state_, media_, connection_, announcer_) {
    announcer_.beforeNews([this](const AppNews& news) { completeNews(news); });
    if (const auto made = ports_.files.createDirectories(setup_.profile); !made) {
        log(LogLevel::error, "the profile's folder cannot be made: " + made.error().message);
    }
    if (const auto& fault = media_.fault()) log(LogLevel::error, "the pictures cannot be read: " + fault->message);
    editor_.inHand().onNewNote([this](const BoardItem* note) { drafts_.keep(note); });
    editor_.setAuthor(slot());
    editor_.boardChanged();
}

AppModel::~AppModel() {
    announcer_.onNews(nullptr);
    // The line may have something to tell yet, which takes all the other parts.
    connection_.close();
}

void AppModel::start() {
    const Announcer::Update update{announcer_};
    desktop_.start();
    feeds_.start();
    people_.refreshFaces();
    if (setup_.offersLaunchAtLogin) offerLaunchAtLogin(ports_.defaults, ports_.loginItem, ports_.log);
    permissions_.refreshNotifications();
    listening_ = ports_.signals.listen(*this);
    home_.start();
    membership_.restore();
}

void AppModel::shutdown() {
    editor_.layDown();
    feeds_.stop();
    desktop_.stop();
    // A new note goes up when its window goes.
    static_cast<void>(editor_.inHand().endEditing());
    drafts_.flush();
    board_.flush();
    media_.flush();
}

void AppModel::becameActive() {
    const Announcer::Update update{announcer_};
    permissions_.refreshContacts();
    permissions_.refreshNotifications();
    people_.refreshFaces();
    hours().lookAgain();
}

void AppModel::setLooking(bool isLooking) {
    board_.setLooking(isLooking);
    feeds_.seen().setLooking(isLooking);
}

// What the person wants of what they were notified of. What is in their hand stays there.
void AppModel::answer(const NewsAnswer& news) {
    const Announcer::Update update{announcer_};
    if (news.wish != NewsAnswer::Wish::show) return endBlock(news);
    if (!editor_.isBusy() && board().find(news.item) != nullptr) editor_.inHand().select(news.item);
    announcer_.askForBoard();
}

// The partner may have been quicker: then nothing is left to end.
void AppModel::endBlock(const NewsAnswer& news) {
    const auto* const card = board().find(news.item);
    const auto* const timer = card == nullptr ? nullptr : card->payload.as<PomodoroPayload>();
    const auto now = ports_.clock.now();
    if (timer == nullptr || Pomodoro::face(*timer, now) != Pomodoro::Face::rung) return;
    const bool cools = news.wish == NewsAnswer::Wish::coolDown;
    static_cast<void>(editor_.replacePayload(news.item, cools ? Pomodoro::coolingDown(*timer, slot(), now)
                                                              : Pomodoro::rested(*timer)));
}

// Onto a board and off it.

void AppModel::pair(std::string_view token, Membership::Kept then) {
    auto parsed = CoupleToken::parse(token);
    if (!parsed) return then(std::unexpected(parsed.error().errorDescription()));
    membership_.keep(std::move(*parsed), std::nullopt, std::move(then));
}

void AppModel::cameOntoBoard(bool isAnotherBoard) {
    connection_.close();
    if (isAnotherBoard) forgetBoard();
    const auto& token = *state_.token;
    feeds_.enter({membership_.serverURL(), token.coupleId}, token);
    if (state_.boardLink && state_.boardLink->coupleId != token.coupleId) invitations_.keepLink(std::nullopt);
    people_.adopt(token);
    editor_.setAuthor(token.slot);
    board_.adopt(token);
    if (!editor_.inHand().isNew()) {
        if (auto note = drafts_.enter(token.coupleId)) editor_.offerNote(std::move(*note));
    }
    home_.lookAround();
    connect();
}

void AppModel::foundLeftBoard(const CoupleToken& token) {
    leaving_.tellWhatIsKept(std::nullopt);
    leaving_.tell(token, membership_.serverURL());
}

void AppModel::sessionRestored(bool isNew) {
    if (!state_.keychainLocked) leaving_.tellWhatIsKept(state_.token);
    home_.lookAround();
    pairing_.sessionRestored(isNew);
}

void AppModel::connect() {
    if (!state_.token) return log(LogLevel::info, "connect: no token");
    connection_.open({membership_.serverURL(), *state_.token, membership_.deviceId()});
    connection_.want(board());
}

void AppModel::leaveBoard() {
    const Announcer::Update update{announcer_};
    log(LogLevel::info, "leaving the board");
    if (state_.token) leaving_.tell(*state_.token, membership_.serverURL());
    connection_.close();
    if (state_.token) media_.forget(state_.token->coupleId);
    membership_.forget();
    forgetBoard();
    invitations_.keepLink(std::nullopt);
    home_.lookAround();
    pairing_.begunAnew();
}

void AppModel::forgetBoard() {
    editor_.discardDraft();
    invitations_.forgetCode();
    people_.forget();
    board_.forget();
    feeds_.leave();
}

void AppModel::releasePartner() {
    people_.releasePartner([this] { invitations_.replaced(); });
}

void AppModel::keepSecretsInFile(bool agreed) {
    const Announcer::Update update{announcer_};
    const bool isAsked = state_.secretPlace == SecretPlace::asking;
    membership_.keepSecretsInFile(agreed);
    if (isAsked && agreed) invitations_.keepLinkAgain();
}

// What the room and the line tell.

void AppModel::received(const ServerMessage& message) {
    std::visit([this](const auto& one) { take(one); }, message.value);
}

void AppModel::take(const ServerMessage::Welcome& welcome) {
    board_.take(welcome);
    meet(welcome.paired, welcome.names);
    feeds_.begin(welcome.roster, slot());
}

void AppModel::take(const ServerMessage::Roster& roster) {
    meet(roster.paired, roster.names);
    feeds_.partner().meet(roster.online, slot());
}

void AppModel::take(const ServerMessage::Presence& presence) {
    feeds_.partner().take(presence, slot(), newestOf(slot(), board(), ports_.clock.now()));
}

void AppModel::meet(PartnerSet paired, const std::optional<SlotNames>& names) {
    const auto partner = other(slot());
    const bool wasThere = state_.paired && state_.paired->contains(partner);
    people_.meet(paired, names);
    if (!wasThere && paired.contains(partner)) invitations_.codeUsed();
    if (!paired.contains(partner)) feeds_.partner().forgetPerson();
}

void AppModel::notStored(const UUID& batchId) {
    board_.withdraw(batchId);
    editor_.withdraw(batchId);
    announcer_.say(std::string{textOf(ActFault::notStored)});
}

void AppModel::couldNotGoUp(const UUID& mediaId, MediaFault why) {
    board_.takeDownPicture(mediaId);
    announcer_.say(std::string{textOf(why)});
}

void AppModel::storeMedia(const UUID& id, std::string bytes, MediaTransfer::Stored then) {
    connection_.storeMedia(id, std::move(bytes), std::move(then));
}

// What happens to the computer.

void AppModel::wokeFromSleep() {
    const Announcer::Update update{announcer_};
    networkChanged();
    board_.lookAtClock();
}

void AppModel::networkChanged() {
    connection_.retryNow();
    leaving_.retryNow();
    feeds_.lookAgain();
}

void AppModel::completeNews(const AppNews& news) {
    if (!news.notices.empty()) state_.notice = news.notices.back();
    if (news.changed.has(AppChange::editor)) {
        presence().setActivity(editor_.isBusy() ? Activity::editing : Activity::idle);
    }
    if (news.changed.has(AppChange::people)) home_.tellName();
    feeds_.follow(news.changed, board(), slot());
}

} // namespace lumaro
