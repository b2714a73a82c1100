// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/SelfPipe.h"

#include "LumaroCore/Support/Fatal.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace lumaro {
namespace {

bool prepare(int end) {
    return ::fcntl(end, F_SETFD, FD_CLOEXEC) == 0 && ::fcntl(end, F_SETFL, O_NONBLOCK) == 0;
}

} // namespace

SelfPipe::SelfPipe(std::function<void()> heard) {
    if (::pipe(ends_.data()) != 0 || !std::ranges::all_of(ends_, prepare)) fatal("the system gives no pipe");
    notifier_.emplace(ends_[0], QSocketNotifier::Read);
    QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_, [this, heard = std::move(heard)] {
        silence();
        heard();
    });
}

SelfPipe::~SelfPipe() {
    notifier_.reset();
    for (const int end : ends_) ::close(end);
}

// A pipe that is full wakes the loop as well.
void SelfPipe::ring(int bell) noexcept {
    const int before = errno;
    static_cast<void>(::write(bell, "!", 1) < 0);
    errno = before;
}

// What one read leaves wakes the loop once more.
void SelfPipe::silence() const {
    std::array<char, 64> rings; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the call
    static_cast<void>(::read(ends_[0], rings.data(), rings.size()) < 0);
}

} // namespace lumaro
