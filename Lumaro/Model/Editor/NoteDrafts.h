// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/BoardItem.h"
#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// Notes that are begun and not up yet, kept on this computer alone, so that nothing typed is lost when the program
/// ends without warning: one for the board ("`couple id`.json", the item as on the wire), and the quick note's text,
/// which belongs to no board ("quick-note.txt").
///
/// Used on the main thread; writing is done in the background. What cannot be written is logged, and lasts as long as
/// the program.
class NoteDrafts {
public:
    /// Of one draft. A note that is larger fits on no board; the start of a longer text is kept.
    static constexpr std::size_t maxBytes = 32768;
    /// From the last letter of the quick note to its writing.
    static constexpr Seconds pause{0.6};

    /// All outlive the drafts, and the files the runner as well.
    struct Ports {
        FileSystem& files; ///< used from the runner's thread and the main one, perhaps at once
        Sleeper& sleeper;
        BackgroundRunner& background;
        Log& log;
    };

    NoteDrafts(std::string folder, Ports ports) : folder_(std::move(folder)), ports_(ports) {}
    NoteDrafts(const NoteDrafts&) = delete;
    NoteDrafts& operator=(const NoteDrafts&) = delete;
    ~NoteDrafts() { flush(); }

    /// From now on the board's draft is this couple's. Answers the one that waits from a run before. Blocks for one
    /// file.
    std::optional<BoardItem> enter(const std::string& coupleId);
    /// The new note in the hand, or that there is none any more.
    void keep(const BoardItem* note);

    /// Reads the file the first time.
    const std::string& quickNote();
    void keepQuickNote(std::string_view text);
    /// Hands what is not written yet to the runner at once.
    void flush();

private:
    std::optional<std::string> read(const std::string& name);
    /// Of no bytes: the file goes.
    void write(const std::string& name, std::string bytes);

    std::string folder_;
    Ports ports_;
    std::string boardName_; ///< of the board's file; empty before there is a board
    std::optional<std::string> quickNote_;
    std::unique_ptr<Sleeper::Wait> wait_;
    std::unique_ptr<BackgroundRunner::Task> task_;
};

} // namespace lumaro
