// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Offline/DemoBoard.h"

#include "Lumaro/Offline/DemoPictures.h"
#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Geometry/Doodle.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/Wire.h"

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>

#include <chrono>
#include <cmath>
#include <utility>

namespace lumaro {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;

UUID idOf(unsigned number) {
    UUID id{};
    id.bytes[6] = 0x40;
    id.bytes[8] = 0x80;
    id.bytes[14] = static_cast<std::uint8_t>(number >> 8);
    id.bytes[15] = static_cast<std::uint8_t>(number);
    return id;
}

/// Puts things up one after the other.
class Hanging {
public:
    explicit Hanging(Instant now) : now_(Wire::truncatedToMilliseconds(now)) { demo_.board.updatedAt = now_; }

    UUID put(Payload payload, Point at, double tilt, PartnerID author = PartnerID::b, double scale = 1) {
        const auto id = idOf(++count_);
        const Hand hand{author, now_ - hours{3}};
        act(Edits::putUp(demo_.board, id, std::move(payload), at, hand));
        act(Edits::turn(demo_.board, id, tilt, hand));
        if (scale != 1) act(Edits::resize(demo_.board, id, scale, hand));
        return id;
    }
    UUID picture(std::string file) {
        const auto id = idOf(1000 + ++pictures_);
        demo_.pictures.emplace(id, std::move(file));
        return id;
    }
    DemoBoard& demo() { return demo_; }
    Instant now() const { return now_; }

private:
    void act(const Edits::Result& ops) {
        if (!ops) fatal("the demonstration's board cannot be made");
        demo_.board = BoardLogic::apply(*ops, std::move(demo_.board), now_).board;
    }

    Instant now_;
    DemoBoard demo_;
    unsigned count_ = 0;
    unsigned pictures_ = 0;
};

PMNode richNote() {
    return pm::doc({pm::paragraph({pm::text("saturday:")}),
                    pm::paragraph({pm::text("oranges", {{pm::bold()}}), pm::text(", bread, "),
                                   pm::text("flowers", {{pm::textColor("#b5472f")}}), pm::text(" 🌷")}),
                    pm::paragraph({pm::text("call gran", {{pm::underline()}}), pm::text("  "),
                                   pm::text("sleep in", {{pm::strike()}})})});
}

InkStroke heart(Point at, double size) {
    InkStroke stroke{"coral", 6, {}};
    for (int i = 0; i <= 60; ++i) {
        const double t = i * 2 * 3.14159265 / 60;
        stroke.points.push_back(
            {at.x + size * std::pow(std::sin(t), 3),
             at.y - size * (13 * std::cos(t) - 5 * std::cos(2 * t) - 2 * std::cos(3 * t) - std::cos(4 * t)) / 16});
    }
    return stroke;
}

InkStroke wave(Point from, double length, const char* ink, double width) {
    InkStroke stroke{ink, width, {}};
    for (int i = 0; i <= 40; ++i) {
        stroke.points.push_back({from.x + length * i / 40, from.y + 9 * std::sin(i * 0.62) - i * 0.35});
    }
    return stroke;
}

void draw(Hanging& hanging, std::vector<InkStroke> strokes, std::optional<UUID> on) {
    auto doodle = makeDoodle(std::move(strokes), on);
    if (!doodle) fatal("the demonstration's doodle cannot be made");
    hanging.put(std::move(doodle->payload), doodle->center, 0);
}

void hangPaper(Hanging& hanging) {
    hanging.put(NotePayload{richNote(), "butter", "brass", std::nullopt}, {214, 236}, -4);
    const auto note = hanging.put(NotePayload{pm::docOfLines("train at 7:40, platform 3\ni'll bring the thermos"),
                                              "sky", "tape", hanging.now() + hours{5}},
                                  {500, 640}, 3, PartnerID::a);
    hanging.put(PhotoPayload{hanging.picture(demoPhoto(0, 0.8)), "that evening at the lake", std::nullopt, 0.8},
                {508, 264}, 2);
    hanging.put(PhotoPayload{hanging.picture(demoPhoto(2, 1.3)), "sunday, slowly", std::nullopt, 1.3}, {1110, 790}, -3,
                PartnerID::a, 0.9);
    hanging.put(StickerPayload{hanging.picture(demoSticker()), 0.92}, {760, 800}, 6, PartnerID::b, 0.92);
    draw(hanging, {heart({634, 512}, 26)}, note);
    draw(hanging, {wave({820, 470}, 210, "plum", 7), wave({850, 500}, 150, "sun", 5)}, std::nullopt);
}

void hangCards(Hanging& hanging) {
    hanging.put(LocationPayload{PartnerID::b}, {826, 236}, 0);
    hanging.put(TimezonesPayload{}, {1196, 172}, 2);
    hanging.put(NowPlayingSlotPayload{PartnerID::b}, {214, 600}, 0);
    hanging.put(CountdownPayload{hanging.now() + days{12} - minutes{5}, "the train to you"}, {1116, 380}, -2);
    hanging.put(CalendarPayload{PartnerID::b}, {1440, 470}, 3);
    auto block = PomodoroPayload{};
    block.phase = PomodoroPhase::block;
    block.startedAt = hanging.now() - minutes{9};
    block.startedBy = PartnerID::b;
    hanging.put(block, {1114, 548}, -1);
    hanging.put(
        NotePayload{pm::docOfLines("good luck today.\nyou know this."), "blush", "coral", hanging.now() + hours{20}},
        {1436, 776}, -2);
}

void addLife(DemoBoard& demo, Instant now) {
    demo.presence.from = PartnerID::b;
    demo.presence.activity = Activity::idle;
    demo.presence.nowPlaying = NowPlaying{.isPlaying = true,
                                          .progressMs = 61'000,
                                          .sampledAt = now,
                                          .durationMs = 214'000,
                                          .title = "harbour lights",
                                          .artist = "the paper boats",
                                          .artworkURL = std::nullopt,
                                          .source = MusicSource::spotify};
    Weather weather;
    const auto there = QDateTime::fromMSecsSinceEpoch(
        std::chrono::floor<std::chrono::milliseconds>(now).time_since_epoch().count(), QTimeZone{demoZone});
    const int lisbonHour = there.time().hour();
    weather.tempC = 17;
    weather.isDay = lisbonHour >= 7 && lisbonHour < 20;
    weather.code = weather.isDay ? 2 : 0;
    weather.feelsC = 15.4;
    weather.hiC = 19;
    weather.loC = 12;
    weather.windDeg = 265;
    weather.windKmh = 23;
    weather.sampledAt = now;
    demo.presence.here = Here{.lat = 38.71,
                              .lon = -9.13,
                              .label = "alfama",
                              .city = "Lisbon",
                              .tz = demoZone,
                              .since = now,
                              .sampledAt = now,
                              .weather = weather};
    const auto today = there.date();
    const auto at = [&](int hour, int minute) {
        return Instant{
            std::chrono::milliseconds{QDateTime{today, QTime{hour, minute}, QTimeZone{demoZone}}.toMSecsSinceEpoch()}};
    };
    demo.calendar = ServerMessage::Calendar{.slot = PartnerID::b,
                                            .status = CalendarStatus::connected,
                                            .day = CalendarDay{today.toString(Qt::ISODate).toStdString(),
                                                               {{"standup", at(9, 30), at(9, 45), false},
                                                                {"dentist", at(12, 0), at(13, 0), false},
                                                                {"choir", at(19, 0), at(21, 0), false}},
                                                               now}};
}

} // namespace

DemoBoard demoBoard(Instant now) {
    Hanging hanging{now};
    hangPaper(hanging);
    hangCards(hanging);
    hanging.demo().board.threadTiedAt = now - days{40};
    addLife(hanging.demo(), now);
    return std::move(hanging.demo());
}

DemoBoard fullDemoBoard(Instant now) {
    Hanging hanging{now};
    hangPaper(hanging);
    hangCards(hanging);
    constexpr const char* papers[] = {"butter", "blush", "sage", "sky", "lilac", "oat"};
    for (unsigned i = 0; hanging.demo().board.items.size() < BoardSpec::maxLiveItems; ++i) {
        const Point at{110.0 + 172.0 * (i % 9), 120.0 + 150.0 * ((i / 9) % 6)};
        const double tilt = (i * 37) % 17 - 8.0;
        if (i % 3 == 2) {
            const double aspect = i % 2 == 0 ? 0.8 : 1.3;
            hanging.put(PhotoPayload{hanging.picture(demoPhoto(static_cast<int>(i), aspect)), "", std::nullopt, aspect},
                        at, tilt, PartnerID::a, 0.55);
        } else {
            hanging.put(NotePayload{pm::docOfLines("note " + std::to_string(i + 1)), papers[i % 6],
                                    i % 2 == 0 ? "brass" : "tape", std::nullopt},
                        at, tilt, PartnerID::b, 0.55);
        }
    }
    addLife(hanging.demo(), now);
    return std::move(hanging.demo());
}

} // namespace lumaro
