// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/ArtworkLookUp.h"

#include "LumaroCore/Music/CoverAddress.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/PercentEncoding.h"
#include "LumaroCore/Support/Unicode.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace lumaro {
namespace {

struct OEmbed {
    std::optional<std::string> thumbnail;

    static constexpr auto fields() { return std::tuple{Field{"thumbnail_url", &OEmbed::thumbnail}}; }
};

struct Song {
    std::optional<std::string> title;
    std::optional<std::string> artist;
    std::optional<std::string> artwork;
    std::optional<double> milliseconds;

    static constexpr auto fields() {
        return std::tuple{Field{"trackName", &Song::title}, Field{"artistName", &Song::artist},
                          Field{"artworkUrl100", &Song::artwork}, Field{"trackTimeMillis", &Song::milliseconds}};
    }
};

struct Songs {
    std::vector<Song> results;

    static constexpr auto fields() { return std::tuple{Field{"results", &Songs::results}}; }
};

constexpr double lengthTolerance = 5000; // milliseconds
constexpr std::size_t longestTerm = 300; // bytes of the words searched for
constexpr std::size_t trackDigits = 22;

// The id of a track of the catalogue, in any of the forms in which players name it.
std::optional<std::string_view> trackIn(std::string_view key) {
    constexpr std::array<std::string_view, 3> forms{"https://open.spotify.com/track/",
                                                    "spotify:track:", "/com/spotify/track/"};
    for (const auto form : forms) {
        const auto start = key.find(form);
        if (start == std::string_view::npos) continue;
        const auto id = key.substr(start + form.size(), trackDigits);
        const auto isDigit = [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        };
        if (id.size() == trackDigits && std::ranges::all_of(id, isDigit)) return id;
    }
    return std::nullopt;
}

// Without what stands in brackets, and without what an edition adds behind a dash.
std::string bareTitle(std::string_view title) {
    std::string bare;
    int depth = 0;
    for (const char c : title) {
        if (c == '(' || c == '[') ++depth;
        if (depth == 0) bare.push_back(c);
        if ((c == ')' || c == ']') && depth > 0) --depth;
    }
    const auto dash = bare.find(" - ");
    if (dash != std::string::npos) {
        const auto addition = folded(std::string_view{bare}.substr(dash));
        constexpr std::array<std::string_view, 6> editions{"remaster", "version", "edit", "mono", "stereo", "feat"};
        if (std::ranges::any_of(editions, [&](auto word) { return addition.contains(word); })) bare.resize(dash);
    }
    return std::string{trimmed(bare)};
}

// Letters and digits alone, for one writes "Don't" and the other "Don’t".
std::string comparable(std::string_view text) {
    const auto whole = folded(text);
    std::string kept;
    std::string_view rest = whole;
    while (!rest.empty()) {
        const auto before = rest;
        const auto character = takeCharacter(rest);
        if (!character) break;
        const auto kind = classOf(*character);
        if (kind == CharacterClass::space || kind == CharacterClass::other) continue;
        kept.append(before.substr(0, before.size() - rest.size()));
    }
    return kept;
}

bool isTheSong(const Song& song, const ArtworkQuery& query) {
    if (!song.title || !song.artist) return false;
    const auto title = comparable(bareTitle(query.title));
    const auto artist = comparable(query.artist);
    const auto found = comparable(*song.artist);
    if (title.empty() || artist.empty() || found.empty() || title != comparable(bareTitle(*song.title))) return false;
    const bool isByThem = artist.contains(found) || found.contains(artist);
    const bool areLengthsKnown = song.milliseconds && query.durationMs > 0;
    return isByThem && (!areLengthsKnown ||
                        std::abs(*song.milliseconds - static_cast<double>(query.durationMs)) <= lengthTolerance);
}

std::optional<std::string> ofCatalogue(std::string url) {
    url = CoverAddress::atOurSize(std::move(url));
    return CoverAddress::isOfCatalogue(url) ? std::optional{std::move(url)} : std::nullopt;
}

} // namespace

std::optional<std::string> ArtworkLookUp::oEmbedURL(const Upstreams& upstreams, const ArtworkQuery& query) {
    const auto track = query.source == MusicSource::spotify ? trackIn(query.trackKey) : std::nullopt;
    if (!track) return std::nullopt;
    return upstreams.oEmbed + "/oembed?url=" + percentEncoded("https://open.spotify.com/track/" + std::string{*track});
}

std::optional<std::string> ArtworkLookUp::artworkInOEmbed(std::string_view body) {
    auto answer = Wire::decode<OEmbed>(body);
    return answer && answer->thumbnail ? ofCatalogue(std::move(*answer->thumbnail)) : std::nullopt;
}

std::optional<std::string> ArtworkLookUp::searchURL(const Upstreams& upstreams, const ArtworkQuery& query,
                                                    std::string_view country) {
    if (query.title.empty() || query.artist.empty()) return std::nullopt;
    auto term = query.artist + " " + bareTitle(query.title);
    if (term.size() > longestTerm) return std::nullopt;
    auto words = percentEncoded(term);
    for (auto space = words.find("%20"); space != std::string::npos; space = words.find("%20", space)) {
        words.replace(space, 3, "+");
    }
    return upstreams.search + "/search?term=" + words +
           "&media=music&entity=song&limit=5&country=" + percentEncoded(country) + "&lang=en_us";
}

std::optional<std::string> ArtworkLookUp::artworkInSearch(std::string_view body, const ArtworkQuery& query) {
    auto answer = Wire::decode<Songs>(body);
    if (!answer) return std::nullopt;
    const auto song = std::ranges::find_if(answer->results, [&](const Song& one) { return isTheSong(one, query); });
    if (song == answer->results.end() || !song->artwork) return std::nullopt;
    return ofCatalogue(std::move(*song->artwork));
}

} // namespace lumaro
