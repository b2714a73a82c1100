// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// The last known board of each couple: a snapshot file each, "`couple id`.json", the board as it is on the wire. What
/// a device shows before the room has spoken; the room's "welcome" mends whatever is missing or old here.
///
/// Used on the main thread; writing is done in the background. A snapshot that was written survives a loss of power.
class BoardStore {
public:
    /// From the first change to its writing, and from one writing to the next.
    static constexpr Seconds pace{0.25};

    /// All outlive the store, and the files the runner as well.
    struct Ports {
        FileSystem& files; ///< used from the runner's thread and the main one, perhaps at once
        Sleeper& sleeper;
        BackgroundRunner& background;
        Log& log;
    };

    BoardStore(std::string folder, Ports ports) : folder_(std::move(folder)), ports_(ports) {}
    BoardStore(const BoardStore&) = delete;
    BoardStore& operator=(const BoardStore&) = delete;
    /// Flushes: the snapshots are on disk once the runner has gone.
    ~BoardStore() { flush(); }

    /// The couple's board as it was last saved, written or not; none when there is none that can be read. A snapshot
    /// that is no board is set aside as "`couple id`.json.corrupt". Blocks for one file.
    std::optional<Board> load(const std::string& coupleId);
    /// Lets the board be written soon; of several before that, the newest. After a fault of the disk the next change
    /// tries again.
    void save(const std::string& coupleId, Board board);
    /// Hands what is not written yet to the runner at once.
    void flush();

private:
    using Boards = std::map<std::string, Board>;
    /// A snapshot that was not written.
    struct Unwritten {
        std::string coupleId;
        std::string why;
        bool hasJson = true;
    };

    static std::vector<Unwritten> write(FileSystem& files, const std::string& folder, const Boards& boards);
    void writeLater();
    void writeNow();
    void written(const std::vector<Unwritten>& faults);
    void setAside(const std::string& name, const std::string& why);
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "store", message); }

    std::string folder_;
    Ports ports_;
    Boards unsaved_;
    Boards underWay_;
    bool isFailing_ = false; ///< the last write failed, which is logged once
    std::unique_ptr<Sleeper::Wait> wait_;
    std::unique_ptr<BackgroundRunner::Task> task_;
};

} // namespace lumaro
