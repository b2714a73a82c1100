// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/CoverMaker.h"
#include "LumaroCore/Music/MusicPlayers.h"
#include "LumaroCore/Music/MusicScripts.h"
#include "LumaroCore/Support/Sleeper.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// Players that do what the test says, and answer when it lets them. Outlives what observes it.
class FakePlayers final : public ScriptRunner, public RunningPlayers, public PlayerNotifications, public PlayerArtwork {
public:
    struct Player {
        std::expected<ScriptValue, LumaroCoreError> answer;
        std::optional<std::string> artwork;
    };

    MusicPlayers players() { return {*this, *this, *this, *this}; }

    /// What a player's script answers; its track key is the title.
    static ScriptValue playing(std::string title, std::string artist = "Nina", double seconds = 215,
                               double position = 0, std::string state = "playing") {
        const auto key = title;
        return {ScriptValue::List{
            {std::move(state)}, {std::move(title)}, {std::move(artist)}, {"An Album"}, {key}, {seconds}, {position}}};
    }
    /// The player does this from now on, and tells it.
    void play(MusicSource source, ScriptValue answer, std::optional<std::string> artwork = std::nullopt) {
        running.insert_or_assign(source, Player{std::move(answer), std::move(artwork)});
        tell(source);
    }
    void quit(MusicSource source) {
        running.erase(source);
        tell(source);
    }
    void tell(MusicSource source) {
        for (const auto& [number, observed] : std::map{observers_}) {
            if (observed.first == source && observers_.contains(number)) observed.second();
        }
    }
    /// Answers the oldest script that waits; false when none does.
    bool answerNext() {
        if (runs_.empty()) return false;
        auto [number, source, then] = std::move(runs_.front());
        runs_.pop_front();
        const auto player = running.find(source);
        then(player == running.end() ? Answer{std::unexpected(LumaroCoreError{LumaroCoreError::ScriptFailed{"gone"}})}
                                     : player->second.answer);
        return true;
    }
    /// From now on they answer by themselves.
    void answerWithin(Sleeper& sleeper, Seconds span) {
        sleeper_ = &sleeper;
        span_ = span;
    }
    void answerAll() {
        while (answerNext()) {
        }
    }

    [[nodiscard]] std::unique_ptr<Run> run(std::string_view source,
                                           std::move_only_function<void(Answer)> then) override {
        const bool isFirst = source == MusicScripts::spotify();
        asked.push_back(isFirst ? MusicSource::spotify : MusicSource::appleMusic);
        runs_.push_back({++made_, asked.back(), std::move(then)});
        if (sleeper_ != nullptr) soon_ = sleeper_->wait(span_, [this] { answerAll(); });
        return std::make_unique<Handle<Run>>([this, number = made_] {
            std::erase_if(runs_, [&](const Waiting& waiting) { return waiting.number == number; });
        });
    }
    bool isRunning(MusicSource source) override { return running.contains(source); }
    void setIncludesBrowsers(bool includes) override { includesBrowsers = includes; }
    [[nodiscard]] std::unique_ptr<Observer> observe(MusicSource source, std::function<void()> changed) override {
        observers_.emplace(++made_, std::pair{source, std::move(changed)});
        return std::make_unique<Handle<Observer>>([this, number = made_] { observers_.erase(number); });
    }
    std::optional<std::string> artworkOf(MusicSource source, std::string_view) override {
        const auto player = running.find(source);
        return player == running.end() ? std::nullopt : player->second.artwork;
    }

    bool isObserved() const { return !observers_.empty(); }

    std::map<MusicSource, Player> running;
    std::vector<MusicSource> asked;
    bool includesBrowsers = false;

private:
    template <class Base>
    struct Handle final : Base {
        explicit Handle(std::function<void()> atEnd) : end(std::move(atEnd)) {}
        ~Handle() override { end(); }
        std::function<void()> end;
    };
    struct Waiting {
        std::size_t number;
        MusicSource source;
        std::move_only_function<void(Answer)> then;
    };

    std::deque<Waiting> runs_;
    std::map<std::size_t, std::pair<MusicSource, std::function<void()>>> observers_;
    std::size_t made_ = 0;
    Sleeper* sleeper_ = nullptr;
    Seconds span_{0};
    std::unique_ptr<Sleeper::Wait> soon_;
};

/// Takes every text that begins with "picture" for a picture.
class FakeCoverMaker final : public CoverMaker {
public:
    std::optional<Cover> ofPicture(std::string_view bytes) override {
        if (!bytes.starts_with("picture")) return std::nullopt;
        return Cover{idOf(bytes), std::string{"\xFF\xD8\xFF", 3}.append(bytes)};
    }
    std::optional<Cover> ofLocalUrl(const std::string& url) override {
        return ofPicture(std::string_view{url}.substr(std::string_view{"file:"}.size()));
    }
    UUID idOf(std::string_view text) override {
        UUID id;
        std::uint64_t hash = std::hash<std::string_view>{}(text);
        for (auto& byte : id.bytes) byte = static_cast<std::uint8_t>((hash = hash * 6364136223846793005U + 1) >> 56U);
        return id;
    }
};

} // namespace lumaro
