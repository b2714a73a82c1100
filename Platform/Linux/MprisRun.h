// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/ScriptRunner.h"
#include "Platform/Linux/MprisPlayer.h"

#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QPointer>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace lumaro {

/// Asks all players of a source at once, and answers with what one of them says once all have answered or taken too
/// long: one that plays before one that is paused and this before one that is stopped; of two, the one that changed
/// last. On the main thread.
class MprisRun final : public ScriptRunner::Run {
public:
    using Then = std::move_only_function<void(ScriptRunner::Answer)>;

    /// Players may go meanwhile. With none to ask it is a failure.
    MprisRun(const std::vector<MprisPlayer*>& players, MusicSource source, Then then);

private:
    struct Question {
        QPointer<MprisPlayer> player;
        std::unique_ptr<QDBusPendingCallWatcher> call;
    };

    void ask(MprisPlayer& player);
    void answered(const Question& question);
    void finish();

    MusicSource source_;
    Then then_;
    std::vector<std::unique_ptr<Question>> questions_;
    std::size_t unanswered_ = 0;
    std::optional<MprisReading> best_;                 ///< so far
    std::chrono::steady_clock::time_point bestChange_; ///< of its player
    QObject loop_;                                     ///< with its end, nothing comes from the loop any more
};

} // namespace lumaro
