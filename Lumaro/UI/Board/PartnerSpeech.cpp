// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/PartnerSpeech.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/SpokenItem.h"
#include "Lumaro/UI/Text.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

/// More become a number.
constexpr std::size_t mostToldApart = 3;

QString deedWords(const PartnerDeed& deed) {
    const auto what = itemWords(deed.item);
    switch (deed.what) {
    case PartnerDeed::What::putUp: return Words::tr("put up %1").arg(what);
    case PartnerDeed::What::tookDown: return Words::tr("took down %1").arg(what);
    case PartnerDeed::What::changed: return Words::tr("changed %1").arg(what);
    case PartnerDeed::What::moved: return Words::tr("moved %1").arg(what);
    }
    std::unreachable();
}

} // namespace

QString sentenceOf(std::span<const PartnerDeed> deeds, const QString& partnerName) {
    const auto name = partnerName.isEmpty() ? Words::tr("they") : partnerName;
    if (deeds.size() > mostToldApart) {
        return Words::tr("%1 changed %n things on the board", "", static_cast<int>(deeds.size())).arg(name);
    }
    QStringList said;
    for (const auto& deed : deeds) said.append(deedWords(deed));
    return name + QLatin1Char{' '} + said.join(QStringLiteral("; "));
}

void PartnerSpeech::hear(const AppNews& news) {
    if (news.changed.has(AppChange::membership) && !app_.state().token) deeds_.clear();
    if (news.deeds.empty()) return;
    for (const auto& deed : news.deeds) add(deed);
    rest_ = sleeper_.wait(pause, [this] { speak(); });
    if (!limit_) limit_ = sleeper_.wait(longest, [this] { speak(); });
}

// What is put up and written on is put up; what is put up and taken down again has not happened.
void PartnerSpeech::add(const PartnerDeed& deed) {
    using enum PartnerDeed::What;
    const auto same = [&](const PartnerDeed& other) { return other.item.id == deed.item.id; };
    const auto before = std::ranges::find_if(deeds_, same);
    if (before == deeds_.end()) return deeds_.push_back(deed);
    if (before->what == putUp && deed.what == tookDown) {
        deeds_.erase(before);
        return;
    }
    const bool isStronger = before->what == putUp || (before->what == changed && deed.what == moved);
    *before = {isStronger ? before->what : deed.what, deed.item};
}

void PartnerSpeech::speak() {
    rest_.reset();
    limit_.reset();
    const auto told = std::exchange(deeds_, {});
    const auto& state = app_.state();
    if (told.empty() || !state.token) return;
    const auto name = state.partnerNames.find(other(state.token->slot));
    Q_EMIT spoke(sentenceOf(told, name == state.partnerNames.end() ? QString{} : qText(name->second)));
}

} // namespace lumaro
