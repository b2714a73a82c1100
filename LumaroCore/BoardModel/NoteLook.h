// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace lumaro {

// What notes are written on and held by, by the names that travel. On the wire both are free strings: a note of a newer
// version may name others, which are shown as the defaults and kept as they came.

/// The plain papers, then those with something on them or at their edge.
inline constexpr std::array<std::string_view, 11> notePapers{"butter", "blush",   "sage",   "sky",   "lilac", "oat",
                                                             "lined",  "squared", "dotted", "kraft", "torn"};
/// What holds a note up: pins, then strips of tape. "tape" is the strip that goes with the paper.
inline constexpr std::array<std::string_view, 13> notePins{
    "brass", "coral",       "mint",     "ink",        "pearl",     "plum",     "heart",
    "tape",  "tapeStripes", "tapeDots", "tapeChecks", "tapeWaves", "tapeKraft"};

inline constexpr std::string_view defaultPaper = notePapers.front();
inline constexpr std::string_view defaultPin = notePins.front();

constexpr bool isNotePaper(std::string_view name) {
    return std::ranges::find(notePapers, name) != notePapers.end();
}

constexpr bool isNotePin(std::string_view name) {
    return std::ranges::find(notePins, name) != notePins.end();
}

} // namespace lumaro
