// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/CityWindow.h"

#include "Lumaro/Model/Media/MediaAnswer.h"
#include "LumaroCore/Support/Wire.h"

#include <utility>

namespace lumaro {
namespace {

constexpr int cityDecimals = 2;
constexpr std::size_t maxKeyAnswerBytes = std::size_t{16} * 1024;
constexpr Seconds keyPatience{20};

} // namespace

void CityWindow::enter(CoupleEndpoints endpoints, CoupleToken token) {
    leave();
    room_ = Room{std::move(endpoints), std::move(token)};
    step();
}

// What must rest goes on resting: a board that is entered again and again runs no program each time.
void CityWindow::leave() {
    room_.reset();
    hasNoPage_ = false;
    key_.reset();
    call_.reset();
    retry_.reset();
    run_.reset();
    keeping_.reset();
    begun_.reset();
    painted_.reset();
    backoff_.reset();
    show();
}

void CityWindow::want(std::optional<Coordinates> partnerPosition) {
    if (partnerPosition && !isOnEarth(*partnerPosition)) partnerPosition.reset();
    if (partnerPosition) partnerPosition = rounded(*partnerPosition, cityDecimals);
    if (position_ == partnerPosition) return;
    position_ = partnerPosition;
    if (run_ || keeping_) begun_.reset();
    run_.reset();
    keeping_.reset();
    if (position_ && painted_ && metresBetween(painted_->position, *position_) > sameCity) painted_.reset();
    show();
    step();
}

// Waits stand still while the computer sleeps.
void CityWindow::lookAgain() {
    if (secondsBetween(begunAt_, ports_.clock.now()) >= pace.count()) hour_.reset();
    retry_.reset();
    step();
}

bool CityWindow::isInstalled() {
    if (!isInstalled_) isInstalled_ = ports_.painter.isInstalled();
    return *isInstalled_;
}

// Does what is next, if it is time for it.
void CityWindow::step() {
    if (!room_ || !position_ || hasNoPage_ || call_ || retry_ || run_ || keeping_ || !isInstalled()) return;
    if (rest_ || (hour_ && begun_ == position_)) return;
    if (key_) return paint();
    ask();
}

void CityWindow::ask() {
    call_ = ports_.http.send({.method = "GET",
                              .url = room_->endpoints.windowKey(),
                              .headers = {{"authorization", room_->token.authorizationHeaderValue()}},
                              .body = {},
                              .timeout = keyPatience,
                              .maxBodyBytes = maxKeyAnswerBytes},
                             [this](const HttpClient::Answer& answer) {
                                 const auto call = std::move(call_);
                                 heard(answer);
                             });
}

void CityWindow::heard(const HttpClient::Answer& answer) {
    using MediaAnswer::Verdict;
    const auto verdict = MediaAnswer::verdictOn(answer);
    if (verdict == Verdict::good) {
        if (auto key = Wire::decode<WindowKey>(answer->body)) key_ = std::move(*key);
    }
    // Of a room without a page nothing is asked again on this board; a token that is no good ends the board by itself.
    hasNoPage_ = verdict == Verdict::notThis || verdict == Verdict::badToken;
    if (key_) {
        backoff_.reset();
        return step();
    }
    if (hasNoPage_) return;
    ports_.log.write(LogLevel::info, "city",
                     verdict == Verdict::good ? "the room's answer names no page" : MediaAnswer::reasonIn(answer));
    retry_ = ports_.sleeper.wait(backoff_.nextDelay(), [this] {
        const auto wait = std::move(retry_);
        step();
    });
}

void CityWindow::paint() {
    const auto position = *position_;
    begun_ = position;
    begunAt_ = ports_.clock.now();
    rest_ = ports_.sleeper.wait(leastPace, [this] {
        const auto wait = std::move(rest_);
        step();
    });
    hour_ = ports_.sleeper.wait(pace, [this] {
        const auto wait = std::move(hour_);
        step();
    });
    run_ = ports_.painter.paint({.page = key_->page,
                                 .key = key_->key,
                                 .lat = position.latitude,
                                 .lon = position.longitude,
                                 .at = begunAt_,
                                 .width = setup_.width,
                                 .height = setup_.height,
                                 .scale = setup_.scale},
                                [this, position](CityPainter::Answer answer) {
                                    const auto run = std::move(run_);
                                    if (!answer) return fail(answer.error().message);
                                    keep(position, std::move(*answer));
                                });
}

void CityWindow::keep(Coordinates position, std::string png) {
    const CityRequest size{
        .page = {}, .key = {}, .at = {}, .width = setup_.width, .height = setup_.height, .scale = setup_.scale};
    keeping_ = inBackground(
        ports_.background,
        [&maker = ports_.maker, &cache = cache_, png = std::move(png), width = size.pixels(setup_.width),
         height = size.pixels(setup_.height)]() -> std::optional<UUID> {
            const auto picture = maker.ofPicture(png, width, height);
            if (!picture || !cache.put(picture->id, picture->jpeg)) return std::nullopt;
            return picture->id;
        },
        [this, position](std::optional<UUID> id) {
            const auto task = std::move(keeping_);
            if (!id) return fail("what came is no picture, or could not be kept");
            painted_ = Painted{position, *id};
            show();
        });
}

// The key may have been changed: the room is asked anew before the next one.
void CityWindow::fail(std::string_view why) {
    ports_.log.write(LogLevel::info, "city", "no picture: " + std::string{why});
    key_.reset();
    painted_.reset();
    show();
}

void CityWindow::show() {
    const auto city = position_ && painted_ ? std::optional{painted_->id} : std::nullopt;
    if (std::exchange(state_.city, city) != city) announcer_.changed(AppChange::pictures);
}

} // namespace lumaro
