// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/News/Announcer.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace lumaro {

void Announcer::changed(AppChange change) {
    const Update update{*this};
    news_.changed.add(change);
}

void Announcer::say(std::string notice) {
    const Update update{*this};
    news_.notices.push_back(std::move(notice));
}

void Announcer::askForQuickNote(std::optional<std::string> text) {
    const Update update{*this};
    news_.quickNotes.push_back(std::move(text));
}

void Announcer::did(std::vector<PartnerDeed> deeds) {
    const Update update{*this};
    std::ranges::move(deeds, std::back_inserter(news_.deeds));
}

void Announcer::askForBoard() {
    const Update update{*this};
    news_.isBoardWanted = true;
}

// Still within the update, so that what the listener does is told after what it was told.
void Announcer::end() {
    while (updates_ == 1 && !news_.isEmpty()) {
        if (complete_) complete_(AppNews{news_});
        const auto told = std::exchange(news_, {});
        // A copy: the listener may set another.
        const auto listener = listener_;
        if (listener) listener(told);
    }
    --updates_;
}

} // namespace lumaro
