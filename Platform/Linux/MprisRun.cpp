// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisRun.h"

#include <tuple>
#include <utility>

namespace lumaro {
namespace {

// As the players' scripts answer: the duration in milliseconds or seconds, the position in seconds.
ScriptValue valueOf(const MprisReading& reading, MusicSource source) {
    using List = ScriptValue::List;
    const ScriptValue state{std::string{namesOf(reading.state).at(std::to_underlying(reading.state))}};
    if (reading.state == PlaybackState::stopped) return {List{state}};
    const double unit = source == MusicSource::spotify ? 1e3 : 1e6;
    return {List{state,
                 {reading.title},
                 {reading.artist},
                 {reading.album},
                 {reading.trackKey},
                 {static_cast<double>(reading.lengthUs) / unit},
                 {static_cast<double>(reading.positionUs) / 1e6}}};
}

// Of two, the higher one is told of.
auto rank(const MprisReading& reading, std::chrono::steady_clock::time_point lastChange) {
    const auto isPlaying = reading.state == PlaybackState::playing;
    return std::tuple{isPlaying, reading.state == PlaybackState::paused, lastChange};
}

} // namespace

MprisRun::MprisRun(const std::vector<MprisPlayer*>& players, MusicSource source, Then then)
    : source_(source), then_(std::move(then)) {
    for (auto* const player : players) {
        if (player->mayBeAsked()) ask(*player);
    }
    if (questions_.empty()) QMetaObject::invokeMethod(&loop_, [this] { finish(); }, Qt::QueuedConnection);
}

void MprisRun::ask(MprisPlayer& player) {
    auto& question = *questions_.emplace_back(
        std::make_unique<Question>(&player, std::make_unique<QDBusPendingCallWatcher>(player.ask())));
    ++unanswered_;
    // Queued: on a bus that has gone the answer is there at once.
    QObject::connect(
        question.call.get(), &QDBusPendingCallWatcher::finished, &loop_, [this, &question] { answered(question); },
        Qt::QueuedConnection);
}

void MprisRun::answered(const Question& question) {
    --unanswered_;
    if (question.player) {
        const auto change = question.player->lastChange();
        auto reading = question.player->read(*question.call);
        if (reading && (!best_ || rank(*best_, bestChange_) < rank(*reading, change))) {
            best_ = std::move(reading);
            bestChange_ = change;
        }
    }
    if (unanswered_ == 0) finish();
}

void MprisRun::finish() {
    auto answer = best_ ? ScriptRunner::Answer{valueOf(*best_, source_)}
                        : std::unexpected{LumaroCoreError{LumaroCoreError::ScriptFailed{"No music player answered"}}};
    // From a local: it may drop this run.
    auto then = std::move(then_);
    then(std::move(answer));
}

} // namespace lumaro
