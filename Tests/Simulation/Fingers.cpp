// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/Fingers.h"

#include <algorithm>

namespace lumaro::simulation {

using samples::chance;
using samples::pick;

// Mostly one of a few, so that two people often edit the same item.
UUID Fingers::anyItem() {
    if (shown_.items.empty()) return {};
    const auto last = std::min(shown_.items.size(), std::size_t{chance(random_, 0.8) ? 3U : 60U}) - 1;
    return shown_.items[pick(random_, std::size_t{0}, last)].id;
}

Point Fingers::anyPlace() {
    return {static_cast<double>(pick(random_, 0, 1600)), static_cast<double>(pick(random_, 0, 1000))};
}

// The result does not matter: the item may be gone, of another kind, or not in the hand.
void Fingers::play() {
    if (hand_.draft() && hand_.draft()->isGone() && chance(random_, 0.3)) {
        return chance(random_, 0.7) ? static_cast<void>(hand_.putBack()) : hand_.cancel();
    }
    const UUID id = anyItem();
    switch (pick(random_, 0, 19)) {
    case 0:
    case 1:
    case 2: return putUp();
    case 3: return carryOut({BoardVerb::TakeDown{id}});
    case 4: return static_cast<void>(editor_.duplicate(id));
    case 5: return carryOut({BoardVerb::SetBackground{static_cast<BackgroundID>(pick(random_, 0, 5))}});
    case 6: return chance(random_, 0.5) ? carryOut({BoardVerb::Keep{id}}) : carryOut({BoardVerb::Unkeep{id}});
    case 7: return static_cast<void>(editor_.replacePayload(id, samples::plainNote("other")));
    case 8:
    case 9:
    case 10: return hold();
    case 11:
    case 12: return write();
    case 13: return draw();
    case 14:
    case 15: return holdSeveral();
    case 16: return onSeveral();
    case 17: return chance(random_, 0.7) ? carryOut({BoardVerb::Unlock{id}}) : carryOut({BoardVerb::Lock{id}});
    case 18: return static_cast<void>(editor_.giveHeart(id));
    default: return carryOut({BoardVerb::Move{id, anyPlace()}});
    }
}

void Fingers::carryOut(const BoardVerb& verb) {
    static_cast<void>(editor_.carryOut(verb));
}

void Fingers::putUp() {
    const auto at = chance(random_, 0.5) ? std::optional{anyPlace()} : std::nullopt;
    if (chance(random_, 0.3)) return static_cast<void>(editor_.pasteText("lemons"));
    auto payload = chance(random_, 0.5) ? Payload{samples::plainNote("pears")} : samples::anyItem(random_, {}).payload;
    static_cast<void>(editor_.putUp(std::move(payload), at));
}

// A gesture spreads over several steps of the script, so that others act in between.
void Fingers::hold() {
    switch (pick(random_, 0, 5)) {
    case 0:
    case 1: return static_cast<void>(hand_.beginGesture(anyItem()));
    case 2: return static_cast<void>(hand_.moveTo(anyPlace()));
    case 3: return static_cast<void>(hand_.turnTo(pick(random_, -20, 20)));
    case 4: return static_cast<void>(hand_.resizeTo(pick(random_, 40, 220) / 100.0));
    default: return static_cast<void>(hand_.endGesture());
    }
}

// As with one item, others act in between.
void Fingers::holdSeveral() {
    auto& group = editor_.group();
    switch (pick(random_, 0, 6)) {
    case 0: return group.select({anyItem(), anyItem(), anyItem()});
    case 1: return static_cast<void>(group.beginGesture());
    case 2: return static_cast<void>(group.moveTo(anyPlace()));
    case 3: return static_cast<void>(group.turnTo(pick(random_, -20, 20)));
    case 4: return static_cast<void>(group.resizeTo(pick(random_, 40, 220) / 100.0));
    case 5: return group.toggle(anyItem());
    default: return static_cast<void>(group.endGesture());
    }
}

void Fingers::onSeveral() {
    const auto end = chance(random_, 0.5) ? Edits::StackEnd::front : Edits::StackEnd::back;
    switch (pick(random_, 0, 3)) {
    case 0: return static_cast<void>(editor_.stackGroup(end));
    case 1: return static_cast<void>(editor_.duplicateGroup());
    case 2:
        return static_cast<void>(
            editor_.carryOutOnGroup([](const UUID& id) { return BoardVerb{BoardVerb::TakeDown{id}}; }));
    default:
        return static_cast<void>(
            editor_.carryOutOnGroup([](const UUID& id) { return BoardVerb{BoardVerb::Keep{id}}; }));
    }
}

void Fingers::write() {
    switch (pick(random_, 0, 4)) {
    case 0:
    case 1: return static_cast<void>(hand_.beginEditing(anyItem()));
    case 2:
    case 3: return static_cast<void>(hand_.changeText(pm::docOfLines(std::to_string(pick(random_, 0, 99)))));
    default: return static_cast<void>(hand_.endEditing());
    }
}

void Fingers::draw() {
    const UUID id = anyItem();
    if (!pen_.edit(id) && !pen_.begin(id)) return;
    static_cast<void>(pen_.down(anyPlace(), {"red", 3}));
    pen_.moveTo(anyPlace());
    if (chance(random_, 0.3)) pen_.eraseAlong(anyPlace(), anyPlace(), 200);
    static_cast<void>(pen_.finish());
}

} // namespace lumaro::simulation
