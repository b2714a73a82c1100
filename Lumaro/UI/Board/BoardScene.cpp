// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/BoardScene.h"

#include "Lumaro/UI/Board/CardFaces.h"
#include "Lumaro/UI/Board/LiveCards.h"
#include "Lumaro/UI/Board/WhoseWords.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/BoardModel/Media.h"
#include "LumaroCore/Support/EnumNames.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace lumaro {
namespace {

/// Waits no longer than this, for clocks are set and machines sleep.
constexpr Seconds longestWait{3600};

/// The items that are in the hand replace those on the board; what is gone from the board stays in the hand.
void layOver(Board& board, const std::vector<BoardItem>& held) {
    for (const auto& item : held) {
        const auto there = std::ranges::find(board.items, item.id, &BoardItem::id);
        if (there != board.items.end()) {
            auto shown = item;
            shown.author = there->author;
            shown.createdBy = there->createdBy;
            shown.createdAt = there->createdAt;
            *there = std::move(shown);
        } else {
            board.items.push_back(item);
        }
    }
}

} // namespace

BoardScene::BoardScene(Ports ports, QObject* parent)
    : QObject(parent), ports_(std::move(ports)), pictures_({ports_.app.media(), ports_.background, ports_.sleeper}),
      picture_([this](const UUID& id, Size points) { return pictures_.picture(id, points * pixelsPerPoint_); }) {
    pictures_.onArrival([this] { refresh(); });
    refresh();
}

QString BoardScene::background() const {
    return qText(nameOf(settled_.background));
}

LiveContext BoardScene::live() const {
    const auto& state = ports_.app.state();
    return {.partner = state.presence,
            .own = state.ownPresence,
            .names = state.partnerNames,
            .me = state.token ? state.token->slot : PartnerID::a,
            .now = ports_.clock.now(),
            .zone = zone_,
            .isFahrenheit = isFahrenheit_,
            .music = state,
            .place = state,
            .covers = state,
            .city = state,
            .picture = picture_,
            .sceneryAt = ports_.sceneryAt};
}

const BoardItem* BoardScene::shownItem(const QString& itemId) const {
    const auto id = UUID::parse(itemId.toStdString());
    return id ? shown_.find(*id) : nullptr;
}

TrackWords BoardScene::trackOf(const QString& itemId) const {
    const auto* const item = shownItem(itemId);
    const auto* const card = item != nullptr ? item->payload.as<NowPlayingSlotPayload>() : nullptr;
    return card != nullptr ? trackWords(*card, live()) : TrackWords{};
}

QString BoardScene::whoseOf(const QString& itemId) const {
    const auto* const item = shownItem(itemId);
    return item != nullptr ? whoseAndWhen(*item, live()) : QString{};
}

QString BoardScene::missingOf(const QString& itemId) const {
    const auto* const item = shownItem(itemId);
    return item != nullptr ? whatTheyCanDo(*item, live()) : QString{};
}

QString BoardScene::questionOf(const QString& itemId) const {
    const auto* const item = shownItem(itemId);
    return item != nullptr ? questionToThem(*item, live()) : QString{};
}

PlaceWords BoardScene::placeOf(const QString& itemId) const {
    const auto* const item = shownItem(itemId);
    const auto* const card = item != nullptr ? item->payload.as<LocationPayload>() : nullptr;
    return card != nullptr ? placeWords(*card, live()) : PlaceWords{};
}

PlaceWords BoardScene::ownPlace() const {
    const auto context = live();
    return placeWords(LocationPayload{context.me}, context);
}

void BoardScene::setFahrenheit(bool isFahrenheit) {
    if (isFahrenheit_ == isFahrenheit) return;
    isFahrenheit_ = isFahrenheit;
    refresh();
}

Board BoardScene::withHand() const {
    Board board = ports_.app.state().board;
    const auto& editor = ports_.app.editor();
    layOver(board, editor.held());
    // A doodle that is under the pen again shows there.
    if (editor.pen().session() && editor.pen().session()->doodle()) {
        std::erase_if(board.items, [&](const BoardItem& item) { return item.id == *editor.pen().session()->doodle(); });
    }
    return board;
}

void BoardScene::hear(AppChanges changed) {
    constexpr std::array ofTheBoard{AppChange::board,  AppChange::partner,    AppChange::ownPresence,
                                    AppChange::people, AppChange::membership, AppChange::pictures,
                                    AppChange::music,  AppChange::place,      AppChange::hours};
    if (std::ranges::any_of(ofTheBoard, [&](AppChange change) { return changed.has(change); })) {
        refresh();
    } else if (changed.has(AppChange::editor)) {
        refreshHand();
    }
}

/// People take their computers along. Once in each minute of the clock, as cards that tell the time change then.
void BoardScene::readZone() {
    const auto minute = std::chrono::floor<std::chrono::minutes>(ports_.clock.now());
    if (zoneReadAt_ == minute) return;
    zone_ = QTimeZone::systemTimeZone();
    zoneReadAt_ = minute;
}

void BoardScene::refresh() {
    readZone();
    const auto& state = ports_.app.state();
    const auto wasTied = settled_.threadTiedAt;
    settled_ = state.board;
    settledRows_ = rowsOf(settled_, {state.arriving, state.falling, {}}, live());
    waitForChange();
    // The window under one's hands is to be drawn first.
    refreshHand();
    Q_EMIT settledChanged();
    const auto& tiedAt = settled_.threadTiedAt;
    if (tiedAt && tiedAt != wasTied && secondsBetween(*tiedAt, ports_.clock.now()) < 2 * BoardSpec::threadDrawSeconds) {
        Q_EMIT threadTied();
    }
}

void BoardScene::refreshHand() {
    const auto& state = ports_.app.state();
    auto board = withHand();
    std::set<UUID> inHand;
    for (const auto& item : ports_.app.editor().held()) inHand.insert(item.id);
    auto rows = board == settled_ && inHand.empty() ? settledRows_
                                                    : rowsOf(board, {state.arriving, state.falling, inHand}, live());
    shown_ = board;
    letGoOfPictures();
    rows_.show(std::move(board), std::move(rows));
    Q_EMIT boardChanged();
}

void BoardScene::letGoOfPictures() {
    std::set<UUID> named;
    for (const auto* const board : {&settled_, &shown_}) {
        const auto media = mediaNamedBy(*board);
        named.insert(media.begin(), media.end());
    }
    for (const auto& cover : {ports_.app.state().ownCover, ports_.app.state().partnerCover}) {
        if (cover) named.insert(*cover);
    }
    pictures_.keepOnly(named);
}

void BoardScene::waitForChange() {
    std::optional<Instant> next;
    for (const auto& item : settled_.items) {
        const auto change = nextChange(item, live());
        if (change && (!next || *change < *next)) next = change;
    }
    change_.reset();
    if (!next) return;
    const Seconds wait{std::max(0.001, secondsBetween(ports_.clock.now(), *next))};
    change_ = ports_.sleeper.wait(std::min(wait, longestWait), [this] { refresh(); });
}

void BoardScene::wantPixels(double perPoint) {
    if (perPoint <= pixelsPerPoint_) return;
    pixelsPerPoint_ = perPoint;
    refresh();
}

} // namespace lumaro
