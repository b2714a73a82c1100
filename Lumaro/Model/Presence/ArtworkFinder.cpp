// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/ArtworkFinder.h"

#include "LumaroCore/Music/CoverAddress.h"
#include "LumaroCore/SyncClient/ReconnectBackoff.h"

#include <utility>

namespace lumaro {

/// One search, one step after the other; dropping it ends it.
class ArtworkFinder::Hunt final : public Search {
public:
    Hunt(ArtworkFinder& finder, ArtworkQuery query, std::move_only_function<void(Answer)> then)
        : finder_(finder), query_(std::move(query)), then_(std::move(then)) {
        later(Seconds{0}, &Hunt::begin);
    }

private:
    // What the player shows.

    void begin() {
        if (!takeFromPlayer()) later(patience, &Hunt::lookAgain);
    }

    void lookAgain() {
        if (!takeFromPlayer()) askSpotify();
    }

    bool takeFromPlayer() {
        auto shown = finder_.ports_.players.artworkOf(query_.source, query_.trackKey);
        if (!shown) return false;
        const auto url = CoverAddress::atOurSize(std::move(*shown));
        if (CoverAddress::isOfCatalogue(url)) {
            answer(url);
        } else if (url.starts_with("file:") || url.starts_with("data:")) {
            make([&maker = finder_.ports_.maker, url] { return maker.ofLocalUrl(url); });
        } else if (CoverAddress::mayBeFetched(url)) {
            load(url, Covers::maxPictureBytes, [this](std::string picture) {
                make(
                    [&maker = finder_.ports_.maker, picture = std::move(picture)] { return maker.ofPicture(picture); });
            });
        } else {
            askSpotify();
        }
        return true;
    }

    template <class Work>
    void make(Work work) {
        task_ = inBackground(finder_.ports_.background, std::move(work), [this](std::optional<Cover> cover) {
            if (!cover) return askSpotify();
            cover_ = std::move(*cover);
            give();
        });
    }

    // To the room.

    void give() {
        if (auto url = finder_.covers_.urlOfGiven(cover_.id)) return answer(std::move(url));
        call_ = finder_.covers_.give(cover_, [this](const HttpClient::Answer& answer) { went(answer); });
        if (!call_) fail();
    }

    void went(const HttpClient::Answer& sent) {
        const auto call = std::move(call_);
        if (sent && sent->isSuccess()) {
            finder_.covers_.given(cover_);
            return answer(finder_.covers_.urlOfGiven(cover_.id));
        }
        constexpr int tooMany = 429;
        constexpr int serverFault = 500;
        const bool mayPass = !sent || sent->status == tooMany || sent->status >= serverFault;
        if (!mayPass) return fail();
        later(backoff_.nextDelay(), &Hunt::give);
    }

    // On the web.

    void askSpotify() {
        const auto url = ArtworkLookUp::oEmbedURL(finder_.setup_.upstreams, query_);
        if (!url) return searchWeb();
        load(*url, ArtworkLookUp::maxAnswerBytes,
             [this](const std::string& body) { answer(ArtworkLookUp::artworkInOEmbed(body)); });
    }

    void searchWeb() {
        const auto url = finder_.looksForCovers_
                             ? ArtworkLookUp::searchURL(finder_.setup_.upstreams, query_, finder_.setup_.country)
                             : std::nullopt;
        if (!url) return answer(std::nullopt);
        load(*url, ArtworkLookUp::maxAnswerBytes,
             [this](const std::string& body) { answer(ArtworkLookUp::artworkInSearch(body, query_)); });
    }

    // Steps.

    void later(Seconds span, void (Hunt::*step)()) {
        wait_ = finder_.ports_.sleeper.wait(span, [this, step] { (this->*step)(); });
    }

    template <class Loaded>
    void load(const std::string& url, std::size_t maxBodyBytes, Loaded loaded) {
        constexpr Seconds webPatience{10};
        call_ = finder_.ports_.http.send({.method = "GET",
                                          .url = url,
                                          .headers = {},
                                          .body = {},
                                          .timeout = webPatience,
                                          .maxBodyBytes = maxBodyBytes},
                                         [this, loaded = std::move(loaded)](HttpClient::Answer came) mutable {
                                             const auto call = std::move(call_);
                                             if (!came || !came->isSuccess()) return fail();
                                             loaded(std::move(came->body));
                                         });
    }

    void fail() { answer(std::unexpected(LumaroCoreError{LumaroCoreError::ArtworkUnavailable{}})); }

    void answer(Answer found) {
        // From a local: it may drop this search.
        auto then = std::move(then_);
        then(std::move(found));
    }

    ArtworkFinder& finder_;
    ArtworkQuery query_;
    std::move_only_function<void(Answer)> then_;
    Cover cover_;
    ReconnectBackoff backoff_{.base = Seconds{2}, .cap = Seconds{120}};
    std::unique_ptr<Sleeper::Wait> wait_;
    std::unique_ptr<HttpClient::Call> call_;
    std::unique_ptr<BackgroundRunner::Task> task_;
};

std::unique_ptr<ArtworkFetcher::Search> ArtworkFinder::fetch(ArtworkQuery query,
                                                             std::move_only_function<void(Answer)> then) {
    return std::make_unique<Hunt>(*this, std::move(query), std::move(then));
}

} // namespace lumaro
