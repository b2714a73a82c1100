// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Media/MediaTransfer.h"

#include "Lumaro/Model/Media/MediaAnswer.h"
#include "LumaroCore/BoardModel/Media.h"
#include "LumaroCore/Protocol/ImageType.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

// The largest medium goes over a line of 150 kbit/s in this time.
constexpr Seconds patience{120};

using MediaAnswer::Verdict;

} // namespace

MediaTransfer::MediaTransfer(CoupleEndpoints endpoints, CoupleToken token, MediaCache& cache, Ports ports,
                             Listener& listener)
    : endpoints_(std::move(endpoints)), token_(std::move(token)), cache_(cache), ports_(ports), listener_(listener) {
    if (const auto& fault = cache_.fault()) {
        log(LogLevel::error, "the pictures on this disk cannot be read: " + fault->message);
    }
    const auto waiting = waitingToGoUp();
    uploads_.assign(waiting.begin(), waiting.end());
    goOn();
}

void MediaTransfer::want(const Board& board) {
    wanted_ = mediaNamedBy(board);
    // A picture on the board counts as used, even while no window shows it.
    for (const auto& id : wanted_) cache_.touch(id);
    const auto isUnwanted = [this](const auto& entry) {
        return std::ranges::find(wanted_, entry.first) == wanted_.end();
    };
    std::erase_if(downloads_, isUnwanted);
    std::erase_if(later_, isUnwanted);
    goOn();
}

void MediaTransfer::retryNow() {
    isRefused_ = false;
    backoff_.reset();
    retry_.reset();
    for (auto& [id, later] : later_) later.wait.reset();
    goOn();
}

void MediaTransfer::goOn() {
    if (isRefused_ || retry_) return;
    if (!upload_ && !uploads_.empty()) startUpload();
    for (const auto& id : wanted_) {
        if (downloads_.size() >= maxDownloads) return;
        const auto later = later_.find(id);
        const bool isSetAside = later != later_.end() && later->second.wait;
        if (!isSetAside && !cache_.has(id) && !downloads_.contains(id)) startDownload(id);
    }
}

void MediaTransfer::tryLater(std::string_view why) {
    log(LogLevel::info, "pictures wait: " + std::string{why});
    if (retry_ || isRefused_) return;
    retry_ = ports_.sleeper.wait(backoff_.nextDelay(), [this] {
        retry_.reset();
        goOn();
    });
}

void MediaTransfer::tokenRefused() {
    if (!isRefused_) log(LogLevel::error, "the room refused this token; no pictures for now");
    isRefused_ = true;
    retry_.reset();
}

// Downloads.

void MediaTransfer::startDownload(const UUID& id) {
    downloads_[id].call = ports_.http.send(
        request("GET", id), [this, id](HttpClient::Answer answer) { downloaded(id, std::move(answer)); });
}

void MediaTransfer::downloaded(UUID id, HttpClient::Answer answer) {
    const auto verdict = MediaAnswer::verdictOn(answer);
    if (verdict == Verdict::good || verdict == Verdict::notThis) backoff_.reset();
    if (verdict == Verdict::good) {
        keep(id, std::move(answer->body));
        return;
    }
    downloads_.erase(id);
    switch (verdict) {
    case Verdict::good: break;
    case Verdict::notNow: tryLater(MediaAnswer::reasonIn(answer)); break;
    case Verdict::notThis: setAside(id, MediaAnswer::reasonIn(answer)); break;
    case Verdict::badToken: tokenRefused(); break;
    }
    goOn();
}

void MediaTransfer::keep(const UUID& id, std::string bytes) {
    auto& step = downloads_[id];
    step.call.reset();
    step.task = inBackground(
        ports_.background, [&cache = cache_, id, bytes = std::move(bytes)] { return cache.put(id, bytes); },
        [this, id](const std::expected<void, MediaError>& kept) { arrived(id, kept); });
}

void MediaTransfer::arrived(UUID id, const std::expected<void, MediaError>& kept) {
    downloads_.erase(id);
    if (!kept) setAside(id, kept.error().message);
    goOn();
    if (kept) listener_.arrived(id);
}

void MediaTransfer::setAside(const UUID& id, std::string_view why) {
    log(LogLevel::info, "no picture " + id.lowerString() + " for now: " + std::string{why});
    auto& later = later_[id];
    later.wait = ports_.sleeper.wait(later.backoff.nextDelay(), [this, id] {
        later_[id].wait.reset();
        goOn();
    });
}

// Uploads.

void MediaTransfer::putUp(const UUID& id, std::string bytes, Stored then) {
    storing_[id] = inBackground(
        ports_.background,
        [&cache = cache_, id, bytes = std::move(bytes), couple = endpoints_.coupleId] {
            return cache.putForUpload(id, bytes, couple);
        },
        [this, id, then = std::move(then)](std::expected<void, MediaError> stored) mutable {
            storing_.erase(id);
            if (stored) {
                uploads_.push_back(id);
            } else {
                log(LogLevel::error, "a picture is not stored: " + stored.error().message);
            }
            then(std::move(stored));
            goOn();
        });
}

void MediaTransfer::startUpload() {
    auto& upload = upload_.emplace(Upload{.id = uploads_.front(), .step = {}});
    uploads_.pop_front();
    upload.step.task = inBackground(
        ports_.background, [&cache = cache_, id = upload.id] { return cache.read(id); },
        [this](FileResult<std::string> bytes) {
            if (bytes) {
                send(std::move(*bytes));
            } else if (bytes.error().fault == FileFault::notFound) {
                finishUpload(MediaFault::lost);
            } else {
                uploadAgain(bytes.error().message);
            }
        });
}

void MediaTransfer::send(std::string bytes) {
    auto put = request("PUT", upload_->id);
    put.headers.push_back({"content-type", std::string{imageTypeOf(bytes).value_or("application/octet-stream")}});
    put.body = std::move(bytes);
    upload_->step.call =
        ports_.http.send(std::move(put), [this](const HttpClient::Answer& answer) { uploaded(answer); });
}

void MediaTransfer::uploaded(const HttpClient::Answer& answer) {
    const bool isThere = answer && answer->status == 409;
    if (isThere) log(LogLevel::error, "the room has other bytes for " + upload_->id.lowerString());
    const auto fault = MediaAnswer::lastingFaultIn(answer);
    const auto verdict = isThere ? Verdict::good : MediaAnswer::verdictOn(answer);
    if (fault || verdict == Verdict::good) {
        backoff_.reset();
        finishUpload(fault);
    } else if (verdict == Verdict::badToken) {
        uploads_.push_front(upload_->id);
        upload_.reset();
        tokenRefused();
    } else {
        uploadAgain(MediaAnswer::reasonIn(answer));
    }
}

// At the end of the row: other pictures are tried first.
void MediaTransfer::uploadAgain(std::string_view why) {
    uploads_.push_back(upload_->id);
    upload_.reset();
    tryLater(why);
}

// The mark is removed before the listener hears of it, so that a restart after that does not upload it again.
void MediaTransfer::finishUpload(std::optional<MediaFault> fault) {
    upload_->step.task = inBackground(
        ports_.background, [&cache = cache_, id = upload_->id] { return cache.uploaded(id); },
        [this, fault](const FileResult<void>& unmarked) {
            if (!unmarked) log(LogLevel::error, "a picture keeps its mark: " + unmarked.error().message);
            const auto id = upload_->id;
            upload_.reset();
            goOn();
            if (!fault) {
                listener_.wentUp(id);
                return;
            }
            log(LogLevel::error, "a picture cannot go up: " + std::string{textOf(*fault)});
            listener_.couldNotGoUp(id, *fault);
        });
}

HttpRequest MediaTransfer::request(std::string method, const UUID& id) const {
    return {.method = std::move(method),
            .url = endpoints_.media(id),
            .headers = {{"authorization", token_.authorizationHeaderValue()}},
            .body = {},
            .timeout = patience};
}

} // namespace lumaro
