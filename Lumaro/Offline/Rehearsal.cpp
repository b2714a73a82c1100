// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Offline/Rehearsal.h"

#include "Lumaro/Offline/DemoPictures.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/Fatal.h"

#include <QtQuick/QQuickWindow>

#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view token = "lm1.q3m7xk2p.a.nbswy3dpo5xxe3de";
constexpr std::string_view couple = "q3m7xk2p";
constexpr const char* cover = "https://lumaro.example/couples/q3m7xk2p/covers/7d3c1f52-6a0e-4b8d-9c41-2f5e8a90b6d3";

template <class Value, class Change>
void changeItem(Board& board, Change change) {
    for (auto& item : board.items) {
        if (const auto* const held = item.payload.as<Value>()) item.payload = change(*held);
    }
}

DemoBoard boardOf(Scene scene, Instant now) {
    if (scene == Scene::full) return fullDemoBoard(now);
    auto demo = demoBoard(now);
    auto& music = *demo.presence.nowPlaying;
    music.artworkURL = cover;
    switch (scene) {
    case Scene::empty: demo.board.items.clear(); break;
    case Scene::quiet:
        demo.presence = {};
        demo.presence.from = PartnerID::b;
        demo.calendar.status = CalendarStatus::notConnected;
        demo.calendar.day.reset();
        demo.board = BoardLogic::apply(*Edits::putUp(demo.board, UUID{}, NowPlayingSlotPayload{PartnerID::a},
                                                     Point{214, 866}, {PartnerID::a, now}),
                                       std::move(demo.board), now)
                         .board;
        break;
    case Scene::paused: music.isPlaying = false; break;
    case Scene::noCover: music.artworkURL.reset(); break;
    case Scene::longNames:
        music.title = "ليلة هادئة في الميناء, or how every lamp along the harbour went out one after the other 🌙";
        music.artist = "the paper boats & les petits bateaux, с оркестром, featuring a choir of forty";
        break;
    case Scene::storm:
        demo.presence.here->weather->code = 95;
        demo.presence.here->weather->isDay = false;
        demo.presence.here->weather->tempC = 9;
        music.isPlaying = false;
        break;
    case Scene::rung:
        changeItem<PomodoroPayload>(demo.board, [&](PomodoroPayload timer) {
            timer.startedAt = now - std::chrono::minutes{27};
            timer.joinedAt = timer.startedAt;
            return timer;
        });
        changeItem<CountdownPayload>(demo.board, [&](CountdownPayload countdown) {
            countdown.targetDate = now;
            return countdown;
        });
        break;
    case Scene::thread: demo.board.threadTiedAt.reset(); break;
    case Scene::together:
    case Scene::alone:
    case Scene::offline:
    case Scene::nextSong:
    case Scene::arrival:
    case Scene::refused:
    case Scene::full:
    case Scene::locked:
    case Scene::welcome:
    case Scene::bringThemOver: break;
    }
    return demo;
}

} // namespace

Rehearsal::Rehearsal(Scene scene)
    : scene_(scene), profile_(folder_.path().toStdString() + "/profile"), defaults_(profile_ + "/settings.ini", log_),
      desktop_(defaults_, [this](QScreen&) { return windows_->makeDesktopWindow(); }),
      app_({.profile = profile_, .version = LUMARO_VERSION}, (settle(), ports())) {
    windows_ = std::make_unique<Windows>(
        AppView::Setup{.folder = qText(std::string_view{profile_}),
                       .version = QStringLiteral(LUMARO_VERSION),
                       .suggestedName = QStringLiteral("ana")},
        Windows::Ports{app_, desktop_, clock_, sleeper_, ids_, background_, defaults_, loginItem_}, [] {});
    app_.onNews([this](const AppNews& news) { windows_->hear(news); });
}

Rehearsal::~Rehearsal() {
    app_.onNews(nullptr);
    app_.shutdown();
}

AppModel::Ports Rehearsal::ports() {
    return {.sleeper = sleeper_,
            .clock = clock_,
            .log = log_,
            .ids = ids_,
            .files = files_,
            .http = http_,
            .background = background_,
            .secretBackground = secretBackground_,
            .rooms = room_,
            .keyring = keyring_,
            .secretFile = secretFile_,
            .defaults = defaults_,
            .notifications = notifications_,
            .loginItem = loginItem_,
            .contacts = contacts_,
            .sounds = sounds_,
            .signals = signals_,
            .origin = origin_,
            .players = players_.players(),
            .coverMaker = coverMaker_,
            .wallpaper = desktop_};
}

/// What the computer holds before the application starts.
void Rehearsal::settle() {
    if (!files_.createDirectories(profile_)) fatal("there is no room for temporary files");
    defaults_.setBoolean("showsBoardOnDesktop", false);
    defaults_.setString("myDisplayName", "ana");
    if (scene_ == Scene::welcome) return;
    defaults_.setString("partnerDisplayName", "bo");
    defaults_.setString("pairedCoupleId", couple);
    if (scene_ == Scene::bringThemOver) defaults_.setString("onboardingStep", "bringThemOver");
    keyring_.hold({std::string{keychainService}, "joinToken"}, std::string{token});
    keyring_.setLocked(scene_ == Scene::locked);
    auto demo = boardOf(scene_, clock_.now());
    room_.hang(std::move(demo), scene_ != Scene::alone);
    room_.setOnline(scene_ != Scene::offline);
}

void Rehearsal::storePictures(const DemoBoard& demo) {
    for (const auto& [id, file] : demo.pictures) {
        if (!app_.media().put(id, file)) fatal("a demonstration's picture cannot be kept");
    }
    if (!app_.media().put(coverMaker_.idOf(cover), demoCover())) fatal("a demonstration's cover cannot be kept");
}

void Rehearsal::open() {
    storePictures(room_.demo());
    app_.start();
    windows_->openBoard();
    cue_ = sleeper_.wait(Seconds{0.8}, [this] { play(); });
}

void Rehearsal::playNextSong() {
    auto presence = room_.demo().presence;
    presence.nowPlaying->title = "a lamp in the window";
    presence.nowPlaying->progressMs = 0;
    presence.nowPlaying->sampledAt = clock_.now();
    room_.setPresence(std::move(presence));
}

void Rehearsal::play() {
    switch (scene_) {
    case Scene::arrival:
        room_.relay(*Edits::putUp(
            room_.demo().board, ids_.next(),
            NotePayload{pm::docOfLines("i'm on the train!"), "sage", "mint", clock_.now() + BoardSpec::noteLifespan},
            Point{1190, 180}, {PartnerID::b, clock_.now()}));
        break;
    case Scene::thread: room_.tieThread(clock_.now()); break;
    case Scene::refused: room_.refuse(); break;
    case Scene::nextSong: playNextSong(); break;
    case Scene::offline: static_cast<void>(app_.editor().pasteText("this one waits for the network")); break;
    case Scene::together:
    case Scene::alone:
    case Scene::storm:
    case Scene::quiet:
    case Scene::paused:
    case Scene::noCover:
    case Scene::longNames:
    case Scene::rung:
    case Scene::full:
    case Scene::empty:
    case Scene::locked:
    case Scene::welcome:
    case Scene::bringThemOver: break;
    }
}

} // namespace lumaro
