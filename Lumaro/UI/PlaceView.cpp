// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/PlaceView.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"

#include <utility>

namespace lumaro {

QString PlaceView::precision() const {
    return qText(nameOf(state().precision));
}

void PlaceView::setPrecision(const QString& precision) {
    if (const auto wanted = fromName<HerePrecision>(precision.toStdString())) app_.place().setPrecision(*wanted);
}

QString PlaceView::chosen() const {
    const auto& place = state().chosenPlace;
    if (!place) return {};
    return Words::tr("%1, %2", "lisbon, portugal").arg(qText(place->name).toLower(), countryName(place->country));
}

QString PlaceView::zoneNote() const {
    const auto& place = state().chosenPlace;
    if (!place || !here() || here()->tz.empty() || here()->tz == place->zone) return {};
    return Words::tr("your clock stays on %1").arg(qText(here()->tz));
}

bool PlaceView::isOff() const {
    return hurdleNow() == PlaceHurdle::denied || hurdleNow() == PlaceHurdle::restricted;
}

QString PlaceView::hurdle() const {
    switch (hurdleNow()) {
    case PlaceHurdle::none:
    case PlaceHurdle::notShared: return {};
    case PlaceHurdle::denied: return Words::tr("location is off for this app");
    case PlaceHurdle::restricted: return Words::tr("this computer doesn't tell where it is");
    case PlaceHurdle::waiting: return scene_.ownPlace().missing;
    }
    std::unreachable();
}

QString PlaceView::help() const {
    switch (hurdleNow()) {
    case PlaceHurdle::none:
    case PlaceHurdle::notShared: return {};
    case PlaceHurdle::denied:
        return Words::tr(
            "the computer's privacy settings can let lumaro know. or say it yourself with “i'm\u00a0in\u00a0…”.");
    case PlaceHurdle::restricted:
        return Words::tr(
            "its location service is switched off, or it has none. say it yourself with “i'm\u00a0in\u00a0…”.");
    case PlaceHurdle::waiting:
        return Words::tr("the first one may take a while. it is quicker to say it yourself with “i'm\u00a0in\u00a0…”.");
    }
    std::unreachable();
}

QString PlaceView::offer() const {
    const bool isReady = hurdleNow() == PlaceHurdle::none || hurdleNow() == PlaceHurdle::waiting;
    return isReady ? Words::tr("where you are") : scene_.ownPlace().missing;
}

QString PlaceView::ownName() const {
    return state().isPlaceNamed && here() ? qText(here()->label) : QString{};
}

QString PlaceView::zone() const {
    return qText(app_.hours().zone());
}

void PlaceView::choose(int row) {
    if (auto place = choices_.at(row)) app_.place().choose(std::move(place));
}

} // namespace lumaro
