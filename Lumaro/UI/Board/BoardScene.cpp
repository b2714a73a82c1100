// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/BoardScene.h"

#include "Lumaro/UI/Board/CardFaces.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/BoardModel/Media.h"
#include "LumaroCore/Support/EnumNames.h"

#include <QtCore/QLocale>

#include <algorithm>
#include <chrono>
#include <utility>

namespace lumaro {
namespace {

/// Waits no longer than this, for clocks are set and machines sleep.
constexpr Seconds longestWait{3600};

/// The items that are in the hand replace those on the board; what is gone from it hangs on in the hand.
void layOver(Board& board, const std::vector<BoardItem>& held) {
    for (const auto& item : held) {
        const auto there = std::ranges::find(board.items, item.id, &BoardItem::id);
        if (there != board.items.end()) {
            auto shown = item;
            shown.author = there->author;
            shown.createdAt = there->createdAt;
            *there = std::move(shown);
        } else {
            board.items.push_back(item);
        }
    }
}

} // namespace

BoardScene::BoardScene(Ports ports, QObject* parent)
    : QObject(parent), ports_(ports), pictures_(ports.app.media(), ports.background),
      picture_([this](const UUID& id, Size points) { return pictures_.picture(id, points * pixelsPerPoint_); }),
      zone_(QTimeZone::systemTimeZone()) {
    pictures_.onArrival([this] { refresh(); });
    refresh();
}

QString BoardScene::background() const {
    return qText(nameOf(shown_.background));
}

Board BoardScene::onScreen() const {
    Board board = ports_.app.state().board;
    const auto& editor = ports_.app.editor();
    if (editor.draft()) layOver(board, editor.draft()->items());
    // A doodle that is under the pen again shows there.
    if (editor.doodle() && editor.doodle()->doodle()) {
        std::erase_if(board.items, [&](const BoardItem& item) { return item.id == *editor.doodle()->doodle(); });
    }
    return board;
}

void BoardScene::refresh() {
    const auto& state = ports_.app.state();
    const auto& editor = ports_.app.editor();
    const LiveContext live{.partner = state.presence,
                           .own = state.ownPresence,
                           .names = state.partnerNames,
                           .me = state.token ? state.token->slot : PartnerID::a,
                           .now = ports_.clock.now(),
                           .zone = zone_,
                           .isFahrenheit = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem,
                           .picture = picture_};
    auto board = onScreen();
    std::set<UUID> inHand;
    if (editor.draft()) {
        for (const auto& item : editor.draft()->items()) inHand.insert(item.id);
    }
    auto rows = rowsOf(board, {state.arriving, state.falling, inHand}, live);
    const auto wasTied = shown_.threadTiedAt;
    shown_ = board;
    const auto media = mediaNamedBy(shown_);
    pictures_.keepOnly({media.begin(), media.end()});
    rows_.show(std::move(board), std::move(rows));
    waitForChange(live);
    Q_EMIT boardChanged();
    const auto& tiedAt = shown_.threadTiedAt;
    if (tiedAt && tiedAt != wasTied && secondsBetween(*tiedAt, live.now) < 2 * BoardSpec::threadDrawSeconds) {
        Q_EMIT threadTied();
    }
}

void BoardScene::waitForChange(const LiveContext& live) {
    std::optional<Instant> next;
    for (const auto& item : shown_.items) {
        const auto change = nextChange(item, live);
        if (change && (!next || *change < *next)) next = change;
    }
    change_.reset();
    if (!next) return;
    const Seconds wait{std::max(0.001, secondsBetween(live.now, *next))};
    change_ = ports_.sleeper.wait(std::min(wait, longestWait), [this] { refresh(); });
}

void BoardScene::wantPixels(double perPoint) {
    if (perPoint <= pixelsPerPoint_) return;
    pixelsPerPoint_ = perPoint;
    refresh();
}

} // namespace lumaro
