// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/MusicSample.h"

#include <optional>
#include <string>
#include <string_view>

/// Covers that the two large catalogues tell of: what they are asked, and what their answers say.
namespace lumaro::ArtworkLookUp {

/// Where the catalogues answer; others in tests.
struct Upstreams {
    std::string oEmbed = "https://open.spotify.com";
    std::string search = "https://itunes.apple.com";
};

/// The answers are some kilobytes.
inline constexpr std::size_t maxAnswerBytes = std::size_t{256} * 1024;

/// Asks spotify's oEmbed for the picture of one of its tracks (GET; no key). None for a track of another player, and
/// for a file of the person's own.
std::optional<std::string> oEmbedURL(const Upstreams& upstreams, const ArtworkQuery& query);
/// The picture in the answer, in the size that we show; none unless it lies in the catalogue.
std::optional<std::string> artworkInOEmbed(std::string_view body);

/// Asks the iTunes Search API for the song in the shop of a country (GET; no key). None without a title or an artist.
std::optional<std::string> searchURL(const Upstreams& upstreams, const ArtworkQuery& query, std::string_view country);
/// The picture of the result that is this song beyond doubt: its title the same but for case, accents and what editions
/// add in brackets or behind a dash, its artist one that contains the other, its length within five seconds where
/// both are known. A wrong cover is worse than none.
std::optional<std::string> artworkInSearch(std::string_view body, const ArtworkQuery& query);

} // namespace lumaro::ArtworkLookUp
