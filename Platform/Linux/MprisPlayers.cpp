// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisPlayers.h"

#include "LumaroCore/Music/MusicPlayers.h"
#include "LumaroCore/Music/MusicScripts.h"
#include "Platform/Linux/MprisListening.h"
#include "Platform/Linux/MprisRun.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

class FailedRun final : public ScriptRunner::Run {
public:
    FailedRun(std::string detail, MprisRun::Then then) : then_(std::move(then)) {
        const auto fail = [this, detail = std::move(detail)] {
            // From a local: it may drop this run.
            auto told = std::move(then_);
            told(std::unexpected{LumaroCoreError{LumaroCoreError::ScriptFailed{detail}}});
        };
        QMetaObject::invokeMethod(&loop_, fail, Qt::QueuedConnection);
    }

private:
    MprisRun::Then then_;
    QObject loop_;
};

} // namespace

class MprisPlayers::Observing final : public Observer {
public:
    Observing(MprisPlayers& players, MusicSource source, std::function<void()> changed)
        : players_(players), source_(source), changed_(std::move(changed)) {}
    Observing(const Observing&) = delete;
    Observing& operator=(const Observing&) = delete;
    ~Observing() override { players_.drop(*this); }

    MusicSource source() const { return source_; }
    // Later, so that whoever hears it may drop any observer.
    void tell() {
        QMetaObject::invokeMethod(&loop_, [changed = changed_] { changed(); }, Qt::QueuedConnection);
    }

private:
    MprisPlayers& players_;
    MusicSource source_;
    std::function<void()> changed_;
    QObject loop_;
};

MprisPlayers::MprisPlayers(QDBusConnection bus, std::chrono::milliseconds longestWithoutTitle)
    : bus_(std::move(bus)), longestWithoutTitle_(longestWithoutTitle) {
}

MprisPlayers::~MprisPlayers() = default;

std::unique_ptr<ScriptRunner::Run> MprisPlayers::run(std::string_view source,
                                                     std::move_only_function<void(Answer)> then) {
    const auto known = std::ranges::find(musicSources, source, MusicScripts::source);
    if (known == musicSources.end()) {
        return std::make_unique<FailedRun>("Could not compile the script", std::move(then));
    }
    return std::make_unique<MprisRun>(listening_ ? listening_->players(*known) : std::vector<MprisPlayer*>{}, *known,
                                      std::move(then));
}

bool MprisPlayers::isRunning(MusicSource source) {
    return listening_ && listening_->hasPlayer(source);
}

void MprisPlayers::setIncludesBrowsers(bool includes) {
    includesBrowsers_ = includes;
    if (listening_) listening_->setIncludesBrowsers(includes);
}

std::unique_ptr<PlayerNotifications::Observer> MprisPlayers::observe(MusicSource source,
                                                                     std::function<void()> changed) {
    auto observing = std::make_unique<Observing>(*this, source, std::move(changed));
    observers_.push_back(observing.get());
    if (!listening_) listen();
    return observing;
}

void MprisPlayers::listen() {
    listening_ = std::make_unique<MprisListening>(
        MprisListening::Setup{.bus = bus_,
                              .covers = covers_,
                              .titleTime = longestWithoutTitle_,
                              .includesBrowsers = includesBrowsers_,
                              .changed = [this](MusicSource source) { tell(source); }});
}

void MprisPlayers::tell(MusicSource source) {
    for (auto* const observer : observers_) {
        if (observer->source() == source) observer->tell();
    }
}

void MprisPlayers::drop(Observing& observing) {
    std::erase(observers_, &observing);
    if (observers_.empty()) listening_.reset();
}

std::optional<std::string> MprisPlayers::artworkOf(MusicSource source, std::string_view trackKey) {
    return covers_.find(source, trackKey);
}

} // namespace lumaro
