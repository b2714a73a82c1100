// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/BoardNotifications.h"

#include "Lumaro/Model/Board/BoardNews.h"

#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view aboutItems = "items";
constexpr std::string_view aboutBlock = "block";
constexpr std::string_view coolDownAction = "coolDown";
constexpr std::string_view restAction = "rest";

} // namespace

BoardNotifications::BoardNotifications(Ports ports, std::function<void(const NewsAnswer&)> answered)
    : ports_(ports), answered_(std::move(answered)) {
    ports_.center.onAnswer([this](const NotificationAnswer& answer) { hear(answer); });
}

void BoardNotifications::tellOfItems(std::span<const BoardItem* const> items, const Board& board,
                                     std::string_view partnerName, std::optional<std::string> picturePath) {
    if (!ports_.defaults.boolean("notifiesOfItems").value_or(true)) return;
    const bool isFirst = isLooking_ || count_ == 0;
    count_ = isFirst ? items.size() : count_ + items.size();
    newest_ = items.back()->id;
    auto notification = isFirst ? newsOf(items, board, partnerName) : newsOfMany(count_, partnerName);
    notification.picturePath = std::move(picturePath);
    notification.about = aboutItems;
    ports_.center.post(std::move(notification));
}

void BoardNotifications::tellOfBlock(const BoardItem& card, std::string_view partnerName) {
    if (!ports_.defaults.boolean("notifiesOfBlocks").value_or(true)) return;
    const auto& timer = *card.payload.as<PomodoroPayload>();
    block_ = card.id;
    auto notification = newsOf(timer, partnerName);
    notification.about = aboutBlock;
    if (timer.phase == PomodoroPhase::block) {
        notification.actions = {{std::string{coolDownAction}, "cool down"}, {std::string{restAction}, "rest"}};
    }
    ports_.center.post(std::move(notification));
}

void BoardNotifications::setLooking(bool isLooking) {
    isLooking_ = isLooking;
    if (isLooking && count_ > 0) forgetItems();
}

void BoardNotifications::forget() {
    if (count_ > 0) forgetItems();
    if (std::exchange(block_, std::nullopt)) ports_.center.withdraw(aboutBlock);
}

void BoardNotifications::forgetItems() {
    count_ = 0;
    newest_.reset();
    ports_.center.withdraw(aboutItems);
}

void BoardNotifications::hear(const NotificationAnswer& answer) {
    using Kind = NotificationAnswer::Kind;
    const bool isOfItems = answer.about == aboutItems;
    if (!isOfItems && answer.about != aboutBlock) return;
    const auto item = isOfItems ? newest_ : block_;
    if (isOfItems) count_ = 0;
    if (!item || answer.kind == Kind::dismissed) return;
    if (answer.kind == Kind::opened) return answered_({NewsAnswer::Wish::show, *item});
    if (answer.action == coolDownAction) answered_({NewsAnswer::Wish::coolDown, *item});
    if (answer.action == restAction) answered_({NewsAnswer::Wish::rest, *item});
}

} // namespace lumaro
