// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace lumaro {

/// Where this program was downloaded from, as far as browsers and the system have kept it.
class DownloadOrigin {
public:
    static constexpr std::size_t maxOrigins = 8;         ///< a person downloads a program a few times
    static constexpr std::size_t maxOriginLength = 2048; ///< bytes: browsers send hardly longer addresses

    DownloadOrigin() = default;
    DownloadOrigin(const DownloadOrigin&) = delete;
    DownloadOrigin& operator=(const DownloadOrigin&) = delete;
    virtual ~DownloadOrigin() = default;

    /// Addresses as they were kept, the most telling first: of the running program, then of what was downloaded last.
    /// Empty when nothing is known. Whoever writes to this person's files can write them: they are no proof of
    /// anything. Blocks as the disk does; from any thread, one call at a time.
    virtual std::vector<std::string> origins() = 0;
};

} // namespace lumaro
