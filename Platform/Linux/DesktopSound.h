// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/SoundPlayer.h"

#include <string>
#include <vector>

namespace lumaro {

/// The sounds of the freedesktop theme, played by whichever player is installed.
class DesktopSound final : public SoundPlayer {
public:
    struct Folders {
        std::vector<std::string> data;     ///< that may hold "sounds", the most important first
        std::vector<std::string> programs; ///< that may hold a player
    };

    explicit DesktopSound(Folders folders) : folders_(std::move(folders)) {}
    /// Those of this person's desktop.
    static Folders userFolders();

    void play(std::string_view name) override;

private:
    Folders folders_;
};

} // namespace lumaro
