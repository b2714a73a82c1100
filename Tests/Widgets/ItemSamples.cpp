// SPDX-License-Identifier: Apache-2.0
#include "Tests/Widgets/ItemSamples.h"

#include "DesignSystem/Tokens.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/BoardModel/NoteLook.h"
#include "LumaroCore/Geometry/Heart.h"
#include "LumaroCore/Geometry/InkSmoothing.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <array>
#include <cmath>

namespace lumaro::samples {
namespace {

using namespace Qt::Literals::StringLiterals;

QSizeF points(Size size) {
    return {size.width, size.height};
}

ShownItem note(const char* name, NoteFace face) {
    return {QString::fromUtf8(name), std::move(face), points(BoardSpec::noteSize)};
}

PMNode lines(const char* text) {
    return pm::docOfLines(text);
}

PMNode markedText() {
    return pm::doc({pm::paragraph({pm::text("film night "), pm::text("friday", {{pm::bold()}}), pm::text("?")}),
                    pm::paragraph({pm::text("your pick, ", {{pm::italic()}}), pm::text("not", {{pm::underline()}}),
                                   pm::text(" the sad one", {{pm::strike()}})}),
                    pm::paragraph({pm::text("i'll cook", {{pm::textColor("#b0432e")}})})});
}

const char* const longText = "things for the weekend: return the books, ask lena about the ladder, the bike needs air, "
                             "soup from the blue pot, and the plant on the left looks thirsty again. also your sister "
                             "called. nothing urgent, she wants the recipe with the lemons and says hello.";

std::string endlessText() {
    std::string text;
    for (int i = 0; i < 7; ++i) text += std::string{longText} + "\n";
    return text;
}

Sheet notes() {
    return {
        .name = "notes",
        .columns = 5,
        .items = {
            note("fresh", {.text = lines("buy oranges"), .paper = u"butter"_s, .pin = u"brass"_s}),
            note("marks", {.text = markedText(), .paper = u"blush"_s, .pin = u"tape"_s, .isKept = true}),
            note("long", {.text = lines(longText), .paper = u"sage"_s, .pin = u"coral"_s}),
            note("endless", {.text = lines(endlessText().c_str()), .paper = u"oat"_s, .pin = u"ink"_s}),
            note("emoji", {.text = lines("good morning ☀️\ncoffee is on 😍🫖"), .paper = u"sky"_s, .pin = u"tape"_s}),
            note("rtl", {.text = lines("בוקר טוב, אהובה\nsee you at six"), .paper = u"lilac"_s, .pin = u"mint"_s}),
            note("half faded",
                 {.text = lines("call grandma before seven"), .paper = u"butter"_s, .pin = u"tape"_s, .fade = 0.5}),
            note("faded",
                 {.text = lines("call grandma before seven"), .paper = u"blush"_s, .pin = u"brass"_s, .fade = 1}),
            note("kept",
                 {.text = lines("the day we met:\n4 june"), .paper = u"oat"_s, .pin = u"tape"_s, .isKept = true}),
            note("empty", {.text = pm::emptyDoc(), .paper = u"sage"_s, .pin = u"tape"_s}),
        }};
}

// Every paper, pin and tape, short and long texts, scripts, emoji and links.
Sheet looks() {
    Sheet sheet{.name = "looks", .columns = 5, .items = {}};
    const auto faceOn = [](std::string_view paper, std::string_view pin, PMNode text) {
        NoteFace face;
        face.text = std::move(text);
        face.paper = QString::fromStdString(std::string{paper});
        face.pin = QString::fromStdString(std::string{pin});
        return face;
    };
    const std::array texts{
        "i love you",
        "buy oranges",
        "नमस्ते, जान",
        "שלום\nسلام\nпривет",
        "the family 👩‍👩‍👧, the flag 🏳️‍🌈, and number 1️⃣ of all ❤️‍🔥 in space "
        "🧑🏽‍🚀",
        "你好、早安\n안녕 おはよう",
        "see https://lumaro.app/for/us, then call me"};
    std::size_t at = 0;
    for (const auto pin : notePins) {
        auto face = faceOn(notePapers[at % notePapers.size()], pin, lines(texts[at % texts.size()]));
        if (at % 2 == 0) face.until = u"until 9:14"_s;
        sheet.items.push_back(note("look", std::move(face)));
        ++at;
    }
    std::vector<PMNode> inked;
    for (const auto& ink : textInks) {
        inked.push_back(pm::paragraph({pm::text("a letter in ink", {{pm::textColor(ink.stored)}})}));
    }
    for (const char* const paper : {"butter", "kraft"}) {
        sheet.items.push_back(note("inks", faceOn(paper, "tape", pm::doc(inked))));
    }
    return sheet;
}

// A fox's head: something with ears and cheeks to cut out.
QImage fox() {
    QImage picture{600, 600, QImage::Format_ARGB32_Premultiplied};
    picture.fill(Qt::transparent);
    QPainter painter{&picture};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor{222, 124, 66});
    painter.drawPolygon(QPolygonF{{{70, 40}, {260, 170}, {90, 300}}});
    painter.drawPolygon(QPolygonF{{{530, 40}, {340, 170}, {510, 300}}});
    painter.setBrush(QColor{92, 60, 48});
    painter.drawPolygon(QPolygonF{{{100, 88}, {196, 166}, {112, 226}}});
    painter.drawPolygon(QPolygonF{{{500, 88}, {404, 166}, {488, 226}}});
    QPainterPath head{{300, 560}};
    head.cubicTo(20, 420, 20, 150, 300, 150);
    head.cubicTo(580, 150, 580, 420, 300, 560);
    painter.fillPath(head, QColor{230, 134, 72});
    QPainterPath cheeks{{300, 560}};
    cheeks.cubicTo(110, 470, 70, 330, 84, 300);
    cheeks.cubicTo(200, 300, 280, 360, 300, 440);
    cheeks.cubicTo(320, 360, 400, 300, 516, 300);
    cheeks.cubicTo(530, 330, 490, 470, 300, 560);
    painter.fillPath(cheeks, QColor{252, 240, 222});
    painter.setBrush(QColor{64, 44, 38});
    painter.drawEllipse(QPointF{200, 300}, 22, 26);
    painter.drawEllipse(QPointF{400, 300}, 22, 26);
    painter.drawEllipse(QPointF{300, 520}, 34, 26);
    return picture;
}

DoodlePayload drawing() {
    DoodlePayload doodle{.width = 260, .height = 220, .strokes = {}, .on = std::nullopt};
    InkStroke heart{"coral", 6, {}};
    for (int i = 0; i <= 60; ++i) {
        const double t = i * 6.2832 / 60;
        heart.points.push_back(
            {92 + 5 * 16 * std::pow(std::sin(t), 3) * 0.9,
             96 - 5 * (13 * std::cos(t) - 5 * std::cos(2 * t) - 2 * std::cos(3 * t) - std::cos(4 * t))});
    }
    InkStroke wave{"sky", 4, {}};
    for (int i = 0; i <= 40; ++i) wave.points.push_back({20 + i * 5.4, 190 + 9 * std::sin(i * 0.62)});
    doodle.strokes = {heart,
                      wave,
                      {"ink", 3, {{190, 40}, {206, 70}, {236, 74}, {214, 94}, {222, 124}, {194, 106}}},
                      {"plum", 9, {{232, 150}}},
                      {"chalk", 4, {{180, 150}, {196, 138}, {208, 152}, {220, 140}}},
                      {"#3f8f6b", 4, {{30, 30}, {36, 16}, {50, 20}, {44, 34}, {30, 30}}}};
    return doodle;
}

ShownItem photo(const char* name, PhotoFace face) {
    const auto size = points(BoardSpec::printSize(face.aspect));
    return {QString::fromUtf8(name), std::move(face), size};
}

Sheet pictures() {
    const auto sticker = points(BoardSpec::stickerSize(1));
    const auto drawn = drawing();
    const auto onItsWay = u"on its way…"_s;
    return {.name = "pictures",
            .columns = 4,
            .items = {
                photo("upright", {landscape({900, 1125}, 24), u"our lake, august"_s, 0.8, {}}),
                photo("wide", {landscape({1600, 900}, 200), u"the long way home, through every village"_s, 1.78, {}}),
                photo("on its way", {{}, u"us"_s, 0.8, onItsWay}),
                photo("square", {landscape({700, 700}, 320), {}, 1.0, {}}),
                {u"sticker"_s, StickerFace{fox(), 1, {}, false}, sticker},
                {u"lifted"_s, StickerFace{fox(), 1, {}, true}, sticker},
                {u"waiting"_s, StickerFace{{}, 1, onItsWay, false}, sticker},
                {u"doodle"_s, DoodleFace{drawn}, QSizeF{drawn.width, drawn.height}},
            }};
}

/// A pen that runs through curls at this many points a second, at first, and three times as fast at the end.
InkStroke curls(const char* ink, double width, double top, double speed) {
    std::vector<PenSample> samples;
    double way = 0;
    for (int i = 0; way < 420; ++i) {
        const double turn = way / 11;
        samples.push_back({{28 + way * 0.48 + 15 * std::sin(turn), top + 17 * std::cos(turn)}, i * 0.008, {}});
        way += speed * (1 + 2 * way / 420) * 0.008;
    }
    return penStroke(samples, ink, width);
}

/// A straight line that is pressed, and let go of.
InkStroke pressed(double top) {
    std::vector<PenSample> samples;
    for (int i = 0; i <= 40; ++i) samples.push_back({{20 + 5.4 * i, top + 4 * std::sin(i * 0.3)}, 0, 1 - i / 40.0});
    return penStroke(samples, "ink", 14);
}

Sheet ink() {
    const auto shown = [](const char* name, std::vector<InkStroke> strokes) {
        DoodlePayload doodle{.width = 260, .height = 150, .strokes = std::move(strokes), .on = std::nullopt};
        return ShownItem{QString::fromUtf8(name), DoodleFace{doodle}, QSizeF{doodle.width, doodle.height}};
    };
    BoardItem doodle;
    doodle.payload = DoodlePayload{.width = 24, .height = 24, .strokes = {}, .on = {}};
    doodle.center = {60, 60};
    const auto heart = heartFor({}, doodle, UUID{}).value();
    auto [w, h] = heart.payload.size();
    return {.name = "ink",
            .columns = 2,
            .items = {shown("slow and fast", {curls("ink", 6, 36, 150), curls("coral", 3, 104, 500)}),
                      shown("a brush", {curls("plum", 14, 40, 300), pressed(110)}),
                      {u"a heart"_s, DoodleFace{heart.payload}, QSizeF{w, h}}}};
}

ShownItem music(const char* name, MusicFace face) {
    return {QString::fromUtf8(name), std::move(face), points(BoardSpec::musicDiskSize)};
}

ShownItem countdown(CountdownFace face) {
    return {face.label, std::move(face), points(BoardSpec::countdownChipSize)};
}

ShownItem block(BlockFace face) {
    return {face.figure, std::move(face), points(BoardSpec::pomodoroCardSize)};
}

Sheet music() {
    using enum MusicFace::State;
    const auto title = u"slow tuesday"_s;
    const auto artist = u"the paper boats"_s;
    const auto longTitle = u"ליל מנוחה על המזח, or how every lamp along the harbour went out, one after the other 🌙"_s;
    const auto longArtist = u"the paper boats & les petits bateaux, с оркестром, featuring a choir of forty"_s;
    const auto piled = u"hum"_s + QString(150, QChar{0x0301});
    constexpr auto steps = MusicFace::armSteps;
    return {.name = "music",
            .columns = 4,
            .items = {
                countdown({u"23"_s, u"days"_s, u"until lisbon"_s, false}),
                countdown({u"1204"_s, u"days"_s, u"until we have paid for the little boat"_s, false}),
                countdown({u"47"_s, u"hours"_s, u"your train 🚆"_s, false}),
                countdown({u"now"_s, {}, u"you are here!"_s, true, true}),
                music("playing", {landscape({500, 500}, 340), title, artist, {}, playing, steps * 3 / 10}),
                music("plain", {{}, u"a song with quite a long name, really"_s, u"somebody"_s, {}, playing}),
                music("paused", {landscape({500, 500}, 40), title, artist, u"paused"_s, paused, steps}),
                music("none", {{}, {}, {}, u"nothing playing"_s, none}),
                music("long names", {landscape({500, 300}, 120), longTitle, longArtist, {}, playing, steps / 2}),
                music("piled marks", {{}, piled, piled, {}, playing, steps / 2}),
                music("not shared", {{}, {}, {}, u"share what i'm listening to"_s, none}),
            }};
}

/// A sky of the northern autumn by the hour, over a town by the sea.
SkyView seen(Sky sky, double hour) {
    SkyView view;
    view.sky = sky;
    view.hour = hour;
    view.sunAltitude = -46 * std::cos(hour / 12 * 3.14159265);
    view.sunAzimuth = 15 * hour;
    view.moon = {.altitude = 34, .azimuth = 140, .lit = 0.34, .brightLimb = -70, .isWaxing = true};
    view.windKmh = 16;
    view.windFrom = 250;
    view.scenery = {.seed = 4711, .people = 550'000, .isByTheSea = true, .hills = 1};
    switch (sky) {
    case Sky::clear:
    case Sky::night: view.clouds = {.low = 0.05, .middle = 0, .high = 0.2}; break;
    case Sky::cloud: view.clouds = {.low = 0.45, .middle = 0.2, .high = 0.3}; break;
    case Sky::fog: view.mist = 0.8; break;
    case Sky::rain:
    case Sky::snow:
    case Sky::storm:
        view.clouds = {.low = 0.9, .middle = 0.8, .high = 0.5};
        view.fall = 0.7;
        view.snowOnRoofs = sky == Sky::snow ? 1 : 0;
        break;
    }
    return view;
}

SkyView elsewhere(SkyView view, Scenery scenery, int latitude) {
    view.scenery = scenery;
    view.latitude = latitude;
    return view;
}

std::vector<ShownItem> clocks() {
    const auto size = points(BoardSpec::timezonesCardSize);
    const ClocksFace::Side lisbon{u"mia"_s, u"07:40"_s, u"16°"_s, seen(Sky::clear, 7.7), Sky::clear};
    const ClocksFace::Side kyoto{u"bo"_s, u"15:40"_s, u"21°"_s, seen(Sky::rain, 15.7), Sky::rain};
    const ClocksFace::Side night{u"bo"_s, u"00:05"_s, u"4°"_s, seen(Sky::snow, 0.1), Sky::snow};
    const ClocksFace::Side unknown{u"bo"_s, {}, u"waiting for a fix"_s, std::nullopt, std::nullopt};
    return {{u"clocks"_s, ClocksFace{lisbon, kyoto, u"8 hours ahead"_s, {}}, size},
            {u"clocks at night"_s, ClocksFace{lisbon, night, u"16.5 hours ahead"_s, u"tomorrow"_s}, size},
            {u"clocks unknown"_s, ClocksFace{lisbon, unknown, {}, {}}, size}};
}

std::vector<ShownItem> blocks() {
    using enum Pomodoro::Face;
    return {block({resting, false, u"25:00"_s, 0, u"nobody is in"_s}),
            block({running, false, u"18:24"_s, 0.27, u"mia and bo"_s}),
            block({running, true, u"4:05"_s, 0.73, u"bo"_s}), block({rung, false, u"0:00"_s, 1, u"mia"_s})};
}

std::vector<ShownItem> days() {
    const auto size = points(BoardSpec::calendarPageSize);
    const std::vector<DayFace::Event> few{{u"9:30"_s, u"dentist"_s}, {u"18:00"_s, u"dinner at lena's"_s}};
    const std::vector<DayFace::Event> many{{u"all day"_s, u"moving!"_s},
                                           {u"10:00"_s, u"keys, and the nice neighbour with the van"_s},
                                           {u"12:15"_s, u"lunch"_s},
                                           {u"16:00"_s, u"call"_s}};
    return {{u"day"_s, DayFace{u"thursday"_s, u"14"_s, u"may"_s, few, 0, {}, u"bo's day"_s}, size},
            {u"full day"_s, DayFace{u"wednesday"_s, u"30"_s, u"september"_s, many, 3, {}, u"mia's day"_s}, size},
            {u"free day"_s, DayFace{u"sunday"_s, u"3"_s, u"may"_s, {}, 0, u"nothing planned"_s, u"bo's day"_s}, size},
            {u"no calendar"_s, DayFace{{}, {}, {}, {}, 0, u"no calendar yet"_s, {}}, size}};
}

Sheet cards() {
    Sheet sheet{.name = "cards", .columns = 4, .items = {}};
    for (const auto& items : {clocks(), blocks(), days()}) {
        sheet.items.insert(sheet.items.end(), items.begin(), items.end());
    }
    return sheet;
}

ShownItem window(const char* name, std::optional<SkyView> view, const QString& age = {}) {
    WindowFace face;
    face.view = std::move(view);
    if (face.view) {
        face.sky = face.view->sky;
        face.place = u"alfama"_s;
        face.time = u"21:14"_s;
        face.temperature = u"17°"_s;
        face.weatherAge = age;
    } else {
        face.words = QString::fromUtf8(name);
    }
    return {QString::fromUtf8(name), std::move(face), points(BoardSpec::locationWindowSize)};
}

Sheet windows() {
    const Scenery village{.seed = 5, .people = 900, .isByTheSea = false, .hills = 2};
    const Scenery north{.seed = 77, .people = 41'000, .isByTheSea = true, .hills = 3};
    const Scenery metropolis{.seed = 99, .people = 8'800'000, .isByTheSea = false, .hills = 0};
    return {.name = "windows",
            .columns = 5,
            .items = {window("clear", seen(Sky::clear, 14)), window("cloud", seen(Sky::cloud, 15)),
                      window("rain", seen(Sky::rain, 15), u"weather as of 14:20"_s),
                      window("snow", elsewhere(seen(Sky::snow, 10), village, 47)),
                      window("fog", elsewhere(seen(Sky::fog, 9), metropolis, 40)),
                      window("dusk", seen(Sky::clear, 18.2)),
                      window("night", elsewhere(seen(Sky::night, 22), metropolis, 40)),
                      window("mountains", elsewhere(seen(Sky::cloud, 17.4), north, 69)),
                      window("storm", elsewhere(seen(Sky::storm, 16), village, -40)),
                      window("waiting for a fix", std::nullopt)}};
}

} // namespace

QImage landscape(QSize size, int hue) {
    QImage picture{size, QImage::Format_RGB32};
    QPainter painter{&picture};
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky{0, 0, 0, size.height() * 0.7};
    sky.setColorAt(0, QColor::fromHsv((hue + 190) % 360, 110, 214));
    sky.setColorAt(1, QColor::fromHsv(hue % 360, 70, 250));
    painter.fillRect(picture.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor{255, 240, 206});
    painter.drawEllipse(QPointF{size.width() * 0.66, size.height() * 0.34}, size.width() * 0.09, size.width() * 0.09);
    for (int i = 0; i < 4; ++i) {
        QPainterPath hill{{0, static_cast<double>(size.height())}};
        for (int x = 0; x <= 40; ++x) {
            const double wave = std::sin(x * 0.16 * (i + 1) + i * 1.9) + 0.5 * std::sin(x * 0.37 + i);
            hill.lineTo(size.width() * x / 40.0, size.height() * (0.5 + 0.13 * i - 0.06 * wave));
        }
        hill.lineTo(size.width(), size.height());
        painter.fillPath(hill, QColor::fromHsv((hue + 150 + 24 * i) % 360, 60 + 26 * i, 196 - 34 * i));
    }
    return picture;
}

std::vector<Sheet> itemSheets() {
    return {notes(), looks(), pictures(), ink(), music(), cards(), windows()};
}

} // namespace lumaro::samples
