// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/CityWindow/CityPainter.h"
#include "LumaroCore/CityWindow/CityPictureMaker.h"
#include "LumaroCore/Location/PositionSource.h"
#include "LumaroCore/Music/MusicPlayers.h"
#include "LumaroCore/Services/ContactCard.h"
#include "LumaroCore/Services/DownloadOrigin.h"
#include "LumaroCore/Services/HomeRoom.h"
#include "LumaroCore/Services/LoginItem.h"
#include "LumaroCore/Services/NotificationCenter.h"
#include "LumaroCore/Services/RoomsNearby.h"
#include "LumaroCore/Services/SecretStore.h"
#include "LumaroCore/Services/SoundPlayer.h"
#include "LumaroCore/Services/SystemSignals.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"
#include "Platform/Posix/SystemClock.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace lumaro {

// A computer that offers nothing and keeps nothing, so that a demonstration leaves no trace on the real one.

class QuietNotifications final : public NotificationCenter {
public:
    void post(LocalNotification) override {}
    void withdraw(std::string_view) override {}
    void onAnswer(Listener) override {}
    std::unique_ptr<Question> permission(Answer) override { return std::make_unique<Question>(); }
    std::unique_ptr<Question> askPermission(Answer) override { return std::make_unique<Question>(); }
};

class QuietLoginItem final : public LoginItem {
public:
    bool isEnabled() override { return isEnabled_; }
    std::expected<void, std::string> enable() override {
        isEnabled_ = true;
        return {};
    }
    std::expected<void, std::string> disable() override {
        isEnabled_ = false;
        return {};
    }

private:
    bool isEnabled_ = false;
};

class QuietContacts final : public ContactCard {
public:
    ContactsAccess access() override { return ContactsAccess::denied; }
    OwnCard ownCard() override { return {.fullName = "ana", .picturePath = std::nullopt}; }
};

class QuietSounds final : public SoundPlayer {
public:
    void play(std::string_view) override {}
};

class QuietOrigin final : public DownloadOrigin {
public:
    std::vector<std::string> origins() override { return {}; }
};

/// No music plays here.
class QuietPlayers final : public ScriptRunner,
                           public RunningPlayers,
                           public PlayerNotifications,
                           public PlayerArtwork {
public:
    MusicPlayers players() { return {*this, *this, *this, *this}; }

    std::unique_ptr<Run> run(std::string_view, std::move_only_function<void(Answer)>) override {
        return std::make_unique<Run>();
    }
    bool isRunning(MusicSource) override { return false; }
    void setIncludesBrowsers(bool) override {}
    std::unique_ptr<Observer> observe(MusicSource, std::function<void()>) override {
        return std::make_unique<Observer>();
    }
    std::optional<std::string> artworkOf(MusicSource, std::string_view) override { return std::nullopt; }
};

/// A computer that is where the scene says; until it says so every search goes on.
class QuietPositions final : public PositionSource {
public:
    explicit QuietPositions(Sleeper& sleeper) : sleeper_(sleeper) {}

    void setAnswer(Answer answer) { answer_ = answer; }

    std::unique_ptr<Search> search(HerePrecision, std::move_only_function<void(Answer)> then) override {
        struct Searching final : Search {
            std::unique_ptr<Sleeper::Wait> wait;
        };
        auto search = std::make_unique<Searching>();
        if (answer_) {
            search->wait =
                sleeper_.wait(Seconds{0.2}, [answer = *answer_, then = std::move(then)]() mutable { then(answer); });
        }
        return search;
    }

private:
    Sleeper& sleeper_;
    std::optional<Answer> answer_;
};

/// The system's clock, set to another hour.
class StagedClock final : public WallClock {
public:
    Instant now() override { return clock_.now() + shift_; }
    void shift(Instant::duration by) { shift_ += by; }

private:
    SystemClock clock_;
    Instant::duration shift_{0};
};

/// No program draws cities.
class QuietCity final : public CityPainter, public CityPictureMaker {
public:
    bool isInstalled() override { return false; }
    std::unique_ptr<Run> paint(CityRequest, std::move_only_function<void(Answer)>) override {
        return std::make_unique<Run>();
    }
    std::optional<CityPicture> ofPicture(std::string_view, std::int64_t, std::int64_t) override { return std::nullopt; }
};

/// This computer keeps no room, and knows of none nearby.
class QuietHomeRoom final : public HomeRoom {
public:
    bool isInstalled() override { return false; }
    void start(std::uint16_t, Started) override {}
    void stop() override {}
};

class QuietNearby final : public RoomsNearby {
public:
    std::unique_ptr<Handle> announce(const std::string&, std::uint16_t) override { return std::make_unique<Handle>(); }
    std::unique_ptr<Handle> browse(Heard) override { return std::make_unique<Handle>(); }
};

class QuietSignals final : public SystemSignals {
public:
    std::unique_ptr<Listening> listen(SystemListener&) override { return std::make_unique<Listening>(); }
};

/// No server answers, but for the weather when the scene has some.
class QuietHttp final : public HttpClient {
public:
    explicit QuietHttp(Sleeper& sleeper) : sleeper_(sleeper) {}

    void setWeather(std::string json) { weather_ = std::move(json); }

    std::unique_ptr<Call> send(HttpRequest request, std::move_only_function<void(Answer)> then) override {
        struct Waiting final : Call {
            std::unique_ptr<Sleeper::Wait> wait;
        };
        auto call = std::make_unique<Waiting>();
        const bool isWeather = !weather_.empty() && request.url.contains("/weather");
        call->wait = sleeper_.wait(Seconds{0.3}, [this, isWeather, then = std::move(then)]() mutable {
            if (isWeather) return then(HttpResponse{.status = 200, .body = weather_});
            then(std::unexpected(HttpFailure{"there is no network in a demonstration"}));
        });
        return call;
    }

private:
    Sleeper& sleeper_;
    std::string weather_;
};

/// Secrets in memory; it may be locked.
template <class Store>
class QuietSecrets final : public Store {
public:
    void setLocked(bool isLocked) { isLocked_ = isLocked; }
    void hold(SecretAddress address, std::string data) {
        const std::scoped_lock lock{mutex_};
        items_[std::move(address)] = std::move(data);
    }

    std::expected<std::string, SecretStatus> query(const SecretAddress& address) override {
        if (isLocked_) return std::unexpected(SecretStatus::locked);
        const std::scoped_lock lock{mutex_};
        const auto item = items_.find(address);
        if (item == items_.end()) return std::unexpected(SecretStatus::itemNotFound);
        return item->second;
    }
    SecretStatus add(const SecretAddress& address, std::string_view data) override {
        const std::scoped_lock lock{mutex_};
        return items_.emplace(address, data).second ? SecretStatus::success : SecretStatus::duplicateItem;
    }
    SecretStatus update(const SecretAddress& address, std::string_view data) override {
        const std::scoped_lock lock{mutex_};
        const auto item = items_.find(address);
        if (item == items_.end()) return SecretStatus::itemNotFound;
        item->second = data;
        return SecretStatus::success;
    }
    SecretStatus remove(const SecretAddress& address) override {
        const std::scoped_lock lock{mutex_};
        return items_.erase(address) == 0 ? SecretStatus::itemNotFound : SecretStatus::success;
    }

private:
    std::atomic<bool> isLocked_ = false;
    std::mutex mutex_;
    std::map<SecretAddress, std::string> items_;
};

} // namespace lumaro
