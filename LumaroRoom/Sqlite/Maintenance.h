// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/Store.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumaro {

/// What people do to a database from the command line.
namespace Maintenance {

/// Writes the database as it is now to `file`, in place of what is there once it is whole on the disk and has been read
/// through. The server may be running.
[[nodiscard]] StoreResult<void> backup(const std::string& database, const std::string& file);

/// Puts a backup in the database's place, whose folder is made where there is none: at every moment one of the two is
/// there whole. `inUse` while the server runs; a file that is damaged, newer than this program or no backup at all is
/// refused before anything is touched.
[[nodiscard]] StoreResult<void> restore(const std::string& file, const std::string& database);

struct CheckReport {
    std::int64_t couples = 0;
    std::int64_t items = 0;
    std::int64_t tombstones = 0;
    std::int64_t batches = 0;
    std::int64_t media = 0;
    std::int64_t covers = 0;
    std::int64_t waitingCommits = 0; ///< that the figures above do not count yet
    std::vector<std::string> faults; ///< what is wrong, a line each; nothing of what people wrote

    bool isSound() const { return faults.empty(); }
    /// For people: a line of figures, then the faults.
    std::string text() const;
};

/// Reads everything and holds it against the rules of the engine and ours. The server may be running.
[[nodiscard]] StoreResult<CheckReport> check(const std::string& database);

} // namespace Maintenance
} // namespace lumaro
