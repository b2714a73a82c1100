// SPDX-License-Identifier: Apache-2.0
#include "LumaroCityView/Outcome.h"

#include <csignal>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace lumaro {
namespace {

int keptOut = STDOUT_FILENO;
int keptError = STDERR_FILENO;

// A copy that other processes do not inherit; what writes to the old number from now on writes to nowhere.
int keep(int stream, int nowhere) {
    constexpr int firstOfOurs = 10;
    const int copy = ::fcntl(stream, F_DUPFD_CLOEXEC, firstOfOurs);
    if (nowhere >= 0) ::dup2(nowhere, stream);
    return copy;
}

bool writeAll(int to, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(to, bytes.data(), bytes.size());
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void onTime(int /*signal*/) {
    end(Outcome::notDrawnInTime, "the page was not drawn in time");
}

} // namespace

void keepStreams() {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    keptOut = keep(STDOUT_FILENO, nowhere);
    keptError = keep(STDERR_FILENO, nowhere);
    if (nowhere > STDERR_FILENO) ::close(nowhere);
}

bool writeOut(std::string_view bytes) {
    return writeAll(keptOut, bytes);
}

// The browser's processes end with their line to this one; nothing of them is on the disk.
void end(Outcome outcome, std::string_view why) {
    if (!why.empty()) {
        writeAll(keptError, "lumaro-cityview: ");
        writeAll(keptError, why);
        writeAll(keptError, "\n");
    }
    ::_exit(std::to_underlying(outcome));
}

void limitTime(unsigned seconds) {
    static_cast<void>(std::signal(SIGALRM, onTime));
    ::alarm(seconds);
}

} // namespace lumaro
