// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace lumaro {

/// How the program ends; the numbers are those of sysexits(3).
enum class Outcome : int {
    drawn = 0,
    badRequest = 64,     ///< what standard input said
    pageNotReached = 69, ///< no answer, or one that is no page
    pageCrashed = 70,    ///< or it took too much memory
    noDisplay = 71,
    notWritten = 74, ///< standard output took no picture
    notDrawnInTime = 75,
    pageLeftItsOrigin = 77, ///< it led elsewhere
};

/// Keeps standard output and standard error for this program alone: what libraries and other processes say goes
/// nowhere, so that people read one line, and no process that ends late keeps the reader of the picture waiting. Called
/// first.
void keepStreams();

/// Writes to the standard output that was kept; false when not all of it went.
bool writeOut(std::string_view bytes);

/// Says why, if there is something to say, on one line of standard error, and ends the program at once. `why` holds
/// nothing of the page or the request. May be called from a signal handler.
[[noreturn]] void end(Outcome outcome, std::string_view why);

/// Ends the program with `notDrawnInTime` after so many seconds, whatever it is doing then.
void limitTime(unsigned seconds);

} // namespace lumaro
