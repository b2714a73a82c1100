// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Offline/Rehearsal.h"

#include "Lumaro/Offline/DemoPictures.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/Wire.h"

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <array>
#include <string>
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

/// One's own window in the place of the photos.
void hangOwnWindow(DemoBoard& demo, Instant now) {
    std::erase_if(demo.board.items, [](const BoardItem& item) { return item.payload.as<PhotoPayload>() != nullptr; });
    const auto ops =
        Edits::putUp(demo.board, UUID{}, LocationPayload{PartnerID::a}, Point{508, 264}, {PartnerID::a, now});
    demo.board = BoardLogic::apply(*ops, std::move(demo.board), now).board;
}

PlaceTable towns() {
    auto table = PlaceTable::open(placesData());
    if (!table) fatal("the table of towns: " + table.error());
    return *table;
}

struct StagedWeather {
    std::int64_t code;
    double tempC;
};

StagedWeather stagedWeather(Sky sky) {
    switch (sky) {
    case Sky::clear: return {0, 21};
    case Sky::cloud: return {3, 16};
    case Sky::rain: return {63, 12};
    case Sky::night: return {0, 11};
    case Sky::fog: return {45, 6};
    case Sky::snow: return {73, -3};
    case Sky::storm: return {95, 14};
    }
    std::unreachable();
}

void setSky(DemoBoard& demo, Sky sky) {
    if (!demo.presence.here || !demo.presence.here->weather) return;
    auto& weather = *demo.presence.here->weather;
    const auto staged = stagedWeather(sky);
    weather.code = staged.code;
    weather.tempC = staged.tempC;
    weather.feelsC = staged.tempC - 2;
    if (sky == Sky::night) weather.isDay = false;
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
    case Scene::oldWeather:
        demo.presence.here->sampledAt = now - std::chrono::hours{5};
        demo.presence.here->weather->sampledAt = now - std::chrono::hours{5};
        break;
    case Scene::neverAsked:
    case Scene::denied:
    case Scene::restricted:
    case Scene::waiting:
    case Scene::byHand:
    case Scene::named: hangOwnWindow(demo, now); break;
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

// A new person says where their board is to live.
std::string serverOf(Scene scene) {
    return scene == Scene::welcome ? "" : "https://board.example";
}

} // namespace

Rehearsal::Rehearsal(Setup setup)
    : setup_(setup), profile_(folder_.path().toStdString() + "/profile"), defaults_(profile_ + "/settings.ini", log_),
      towns_(towns()), desktop_(defaults_, [this](QScreen&) { return windows_->makeDesktopWindow(); }),
      app_({.profile = profile_, .version = LUMARO_VERSION, .defaultServerURL = serverOf(setup.scene)},
           (settle(), ports())) {
    windows_ = std::make_unique<Windows>(
        AppView::Setup{.folder = qText(std::string_view{profile_}),
                       .version = QStringLiteral(LUMARO_VERSION),
                       .suggestedName = QStringLiteral("ana")},
        Windows::Ports{app_, desktop_, clock_, sleeper_, ids_, background_, defaults_, loginItem_, towns_}, [] {});
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
            .cityPainter = city_,
            .cityMaker = city_,
            .positions = positions_,
            .geocoder = geocoder_,
            .zone = zone_,
            .homeRoom = homeRoom_,
            .nearby = nearby_,
            .wallpaper = desktop_};
}

/// To that hour of the partner's day; the minutes stay.
void Rehearsal::setHour(int hour) {
    const auto there = QDateTime::currentDateTimeUtc().toTimeZone(QTimeZone{demoZone}).time();
    clock_.shift(std::chrono::hours{hour - there.hour()});
}

/// What this person said of their place before, and what the computer answers.
void Rehearsal::settlePlace() {
    constexpr Coordinates kitchen{52.4861, 13.4246};
    const auto now = std::chrono::floor<std::chrono::milliseconds>(clock_.now()).time_since_epoch().count();
    http_.setWeather(R"({"tempC":8.6,"feelsC":6.1,"code":3,"isDay":true,"hiC":11,"loC":4.4,"windDeg":290,"windKmh":22,)"
                     R"("sampledAt":)" +
                     std::to_string(now) + "}");
    const auto scene = setup_.scene;
    const std::array shared{Scene::denied, Scene::restricted, Scene::waiting, Scene::byHand, Scene::named};
    if (std::ranges::find(shared, scene) != shared.end()) defaults_.setBoolean("sharesPlace", true);
    if (scene == Scene::denied) positions_.setAnswer({LocationAccess::denied, std::nullopt});
    if (scene == Scene::restricted) positions_.setAnswer({LocationAccess::restricted, std::nullopt});
    if (scene == Scene::neverAsked || scene == Scene::named)
        positions_.setAnswer({LocationAccess::authorized, kitchen});
    if (scene == Scene::byHand) {
        defaults_.setString("locationByHand",
                            R"({"name":"Lisboa","country":"PT","zone":"Europe/Lisbon","lat":38.71667,"lon":-9.13333})");
    }
    if (scene == Scene::named) {
        PlaceBook book;
        static_cast<void>(book.rename(kitchen.latitude, kitchen.longitude, "our kitchen"));
        defaults_.setString("locationPlaceBook", *Wire::encode(book));
    }
}

/// What the computer holds before the application starts.
void Rehearsal::settle() {
    if (!files_.createDirectories(profile_)) fatal("there is no room for temporary files");
    if (setup_.hour) setHour(*setup_.hour);
    settlePlace();
    defaults_.setBoolean("showsBoardOnDesktop", false);
    defaults_.setString("myDisplayName", "ana");
    if (setup_.scene == Scene::welcome) return;
    const bool isStarted = setup_.scene == Scene::bringThemOver;
    defaults_.setString("pairedCoupleId", couple);
    if (isStarted) defaults_.setString("onboardingStep", "bringThemOver");
    if (!isStarted) defaults_.setString("partnerDisplayName", "bo");
    keyring_.hold({std::string{keychainService}, "joinToken"}, std::string{token});
    keyring_.setLocked(setup_.scene == Scene::locked);
    auto demo = boardOf(setup_.scene, clock_.now());
    if (setup_.sky) setSky(demo, *setup_.sky);
    if (isStarted) {
        demo.board.items.clear();
        demo.board.threadTiedAt.reset();
    }
    room_.setPaired(!isStarted);
    room_.hang(std::move(demo), setup_.scene != Scene::alone && !isStarted);
    room_.setOnline(setup_.scene != Scene::offline);
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
    switch (setup_.scene) {
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
    case Scene::neverAsked:
    case Scene::denied:
    case Scene::restricted:
    case Scene::waiting:
    case Scene::byHand:
    case Scene::named:
    case Scene::oldWeather:
    case Scene::locked:
    case Scene::welcome:
    case Scene::bringThemOver: break;
    }
}

} // namespace lumaro
