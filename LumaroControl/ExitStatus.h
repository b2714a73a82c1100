// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace lumaro {

/// Exit statuses of `lumaroctl`, those of sysexits.h.
enum class ExitStatus : int {
    ok = 0,
    usage = 64,       ///< the command line makes no sense
    data = 65,        ///< the input cannot be read, or the board does not take it
    unavailable = 69, ///< the board's server does not answer
    inOut = 74,       ///< standard input or output, or the disk, failed
    busy = 75,        ///< another process has the profile, or the server wants to be asked later
    refused = 77,     ///< this profile is on no board, or the server says no
    config = 78,      ///< a file of the profile cannot be read
};

} // namespace lumaro
