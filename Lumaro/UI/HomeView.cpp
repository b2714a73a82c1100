// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/HomeView.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/Overloaded.h"

#include <QtCore/QStringList>

#include <utility>
#include <variant>

namespace lumaro {
namespace {

QString serverText(const std::string& url) {
    constexpr std::string_view usual = "https://";
    return qText(std::string_view{url}.substr(url.starts_with(usual) ? usual.size() : 0));
}

// As others of the network reach it, and for how long.
QString keptText(const HomeRoom::Running& running) {
    const auto address = qText(running.host) + QLatin1Char{':'} + QString::number(running.port);
    switch (running.lasts) {
    case HomeRoom::Lasts::withLogin:
        return Words::tr(
                   "they reach it at %1 while this computer is on and in the same network, or the same private one. "
                   "both of you can go on without it, and it catches up.")
            .arg(address);
    case HomeRoom::Lasts::withProgram:
        return Words::tr(
                   "they reach it at %1 while lumaro runs here and this computer is in the same network, or the same "
                   "private one. both of you can go on without it, and it catches up.")
            .arg(address);
    }
    std::unreachable();
}

void takeKeptHere(HomeFace& face, const KeptHere& kept) {
    std::visit(Overloaded{[&](const KeptHere::No&) {
                              face.keeping =
                                  Words::tr("they reach it while this computer is on and in the same network, or "
                                            "the same private one.");
                          },
                          [&](const KeptHere::Starting&) {
                              face.isKeptHere = true;
                              face.isStarting = true;
                              face.keeping = Words::tr("just a moment…");
                          },
                          [&](const KeptHere::Kept& here) {
                              face.isKeptHere = true;
                              face.keeping = keptText(here.running);
                              const auto own = "http://127.0.0.1:" + std::to_string(here.running.port);
                              if (face.server == qText(own)) face.server = Words::tr("this computer");
                          },
                          [&](const KeptHere::Failed&) {
                              face.keeping =
                                  Words::tr("the room didn't start on this computer. try again in a moment?");
                          }},
               kept.value);
}

} // namespace

HomeFace homeFace(const AppState& state) {
    HomeFace face;
    face.server = serverText(state.serverURL);
    face.isChangeable = !state.token && !state.isSettling;
    face.needsServer = std::holds_alternative<PairingPhase::NeedsServer>(state.pairing.value);
    std::visit(
        Overloaded{[](const AddressCheck::None&) {}, [&](const AddressCheck::Asking&) { face.isAsking = true; },
                   [&](const AddressCheck::Good& good) {
                       face.isGood = true;
                       face.found =
                           good.address.isEncrypted()
                               ? Words::tr("that's a room, and the way to it is encrypted.")
                               : Words::tr(
                                     "that's a room. the way to it isn't encrypted: fine in a network of your own.");
                   },
                   [&](const AddressCheck::Bad& bad) { face.found = Words::of(bad.message); }},
        state.addressCheck.value);
    face.canKeepHere = state.canKeepHere;
    takeKeptHere(face, state.keptHere);
    QStringList names;
    for (const auto& room : state.roomsNearby) names.append(qText(room.name));
    face.nearby = names.join(QStringLiteral(", "));
    return face;
}

void HomeView::refresh() {
    auto face = homeFace(app_.state());
    if (std::exchange(face_, std::move(face)) != face_) Q_EMIT changed();
}

} // namespace lumaro
