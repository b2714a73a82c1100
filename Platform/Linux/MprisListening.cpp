// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisListening.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <algorithm>
#include <ranges>
#include <set>
#include <utility>

namespace lumaro {
namespace {

QDBusMessage callToBus(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace

// The watcher is there before the bus is asked, so that no player comes between the two.
MprisListening::MprisListening(Setup setup)
    : setup_(std::move(setup)),
      watcher_(QString::fromUtf16(MprisNames::root) + u'*', setup_.bus, QDBusServiceWatcher::WatchForOwnerChange) {
    QObject::connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, &watcher_,
                     [this](const QString& name, const QString& /*before*/, const QString& owner) {
                         if (MprisNames::isPlayer(name)) setOwner(name, owner);
                     });
    // Without a bus, a call that Qt itself would never finish.
    if (setup_.bus.isConnected()) findNames();
}

void MprisListening::findNames() {
    auto* const names =
        new QDBusPendingCallWatcher{setup_.bus.asyncCall(callToBus(QStringLiteral("ListNames"))), &watcher_};
    QObject::connect(names, &QDBusPendingCallWatcher::finished, &watcher_, [this, names] {
        const QDBusPendingReply<QStringList> reply = *names;
        names->deleteLater();
        if (reply.isError()) return;
        for (const auto& name : reply.value()) {
            if (MprisNames::isPlayer(name) && !owners_.contains(name)) askOwner(name);
        }
    });
}

// The bus keeps the order: what it says later of the name comes later.
void MprisListening::askOwner(const QString& name) {
    auto call = callToBus(QStringLiteral("GetNameOwner"));
    call.setArguments({name});
    auto* const owner = new QDBusPendingCallWatcher{setup_.bus.asyncCall(call), &watcher_};
    QObject::connect(owner, &QDBusPendingCallWatcher::finished, &watcher_, [this, owner, name] {
        const QDBusPendingReply<QString> reply = *owner;
        owner->deleteLater();
        if (!reply.isError()) setOwner(name, reply.value());
    });
}

void MprisListening::setOwner(const QString& name, const QString& owner) {
    if (owner.isEmpty()) {
        owners_.erase(name);
    } else if (owners_.size() < maxNames || owners_.contains(name)) {
        owners_.insert_or_assign(name, owner);
    }
    followPlayers();
}

void MprisListening::setIncludesBrowsers(bool includes) {
    if (std::exchange(setup_.includesBrowsers, includes) != includes) followPlayers();
}

void MprisListening::followPlayers() {
    const auto counting = MprisNames::players(owners_, setup_.includesBrowsers);
    std::set<MusicSource> changes;
    std::erase_if(players_, [&](const auto& entry) {
        const auto source = entry.second->source();
        const auto place = counting.find(entry.first);
        const bool stays = place != counting.end() && place->second == source;
        if (!stays) changes.insert(source);
        return !stays;
    });
    for (const auto& [owner, source] : counting) {
        if (players_.size() == maxPlayers) break;
        if (players_.contains(owner)) continue;
        players_.emplace(owner, newPlayer(owner, source));
        changes.insert(source);
    }
    for (const auto source : changes) setup_.changed(source);
}

std::unique_ptr<MprisPlayer> MprisListening::newPlayer(const QString& owner, MusicSource source) {
    auto player = std::make_unique<MprisPlayer>(MprisPlayer::Setup{
        .bus = setup_.bus, .owner = owner, .source = source, .covers = setup_.covers, .titleTime = setup_.titleTime});
    QObject::connect(player.get(), &MprisPlayer::changed, &watcher_, [this, source] { setup_.changed(source); });
    return player;
}

bool MprisListening::hasPlayer(MusicSource source) const {
    return std::ranges::any_of(players_, [&](const auto& entry) { return entry.second->source() == source; });
}

std::vector<MprisPlayer*> MprisListening::players(MusicSource source) const {
    std::vector<MprisPlayer*> some;
    for (const auto& player : players_ | std::views::values) {
        if (player->source() == source) some.push_back(player.get());
    }
    return some;
}

} // namespace lumaro
