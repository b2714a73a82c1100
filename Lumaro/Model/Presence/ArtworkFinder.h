// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Presence/Covers.h"
#include "LumaroCore/Music/ArtworkFetcher.h"
#include "LumaroCore/Music/ArtworkLookUp.h"
#include "LumaroCore/Music/PlayerArtwork.h"
#include "LumaroCore/Support/Sleeper.h"

#include <memory>
#include <string>

namespace lumaro {

/// Finds a cover that the partner may load. What the player shows comes first: as it is when it lies in one of the
/// large catalogues; anything else this device reads at once, makes small and gives to the couple's room. Where the
/// player shows none, spotify is asked about its own tracks, and the web about others if the person said so.
class ArtworkFinder final : public ArtworkFetcher {
public:
    /// All outlive this.
    struct Ports {
        PlayerArtwork& players;
        HttpClient& http;
        Sleeper& sleeper;
        BackgroundRunner& background;
        CoverMaker& maker;
    };
    struct Setup {
        ArtworkLookUp::Upstreams upstreams;
        std::string country = "US"; ///< whose shop is searched, two letters
    };

    /// Some players show a cover a second after the title.
    static constexpr Seconds patience{2};

    /// Whether covers are looked for on the web is read when it matters.
    ArtworkFinder(Setup setup, Ports ports, Covers& covers, const bool& looksForCovers)
        : setup_(std::move(setup)), ports_(ports), covers_(covers), looksForCovers_(looksForCovers) {}

    [[nodiscard]] std::unique_ptr<Search> fetch(ArtworkQuery query,
                                                std::move_only_function<void(Answer)> then) override;

private:
    class Hunt;

    Setup setup_;
    Ports ports_;
    Covers& covers_;
    const bool& looksForCovers_;
};

} // namespace lumaro
