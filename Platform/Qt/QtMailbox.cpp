// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtMailbox.h"

#include "LumaroCore/Support/Fatal.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace lumaro {
namespace {

// So many calls in one turn of the event loop: others want theirs.
constexpr std::size_t callsPerTurn = 64;

} // namespace

QtMailbox::QtMailbox() : wire_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (wire_ < 0) fatal("the system gives no event descriptor");
    bell_.emplace(wire_, QSocketNotifier::Read);
    QObject::connect(&*bell_, &QSocketNotifier::activated, &*bell_, [this] { takeTurn(); });
}

QtMailbox::~QtMailbox() {
    bell_.reset();
    ::close(wire_);
}

void QtMailbox::post(std::move_only_function<void()> call) {
    const std::scoped_lock lock{mutex_};
    calls_.push_back(std::move(call));
    if (calls_.size() == 1) wakeUp();
}

void QtMailbox::empty() {
    for (auto calls = take(callsPerTurn); !calls.empty(); calls = take(callsPerTurn)) {
        for (auto& call : calls) call();
    }
}

// A counter that is full wakes the loop as well.
void QtMailbox::wakeUp() const {
    static_cast<void>(::eventfd_write(wire_, 1));
}

void QtMailbox::takeTurn() {
    eventfd_t rings = 0;
    static_cast<void>(::eventfd_read(wire_, &rings));
    for (auto& call : take(callsPerTurn)) call();
}

// What stays is another turn's.
QtMailbox::Calls QtMailbox::take(std::size_t most) {
    const std::scoped_lock lock{mutex_};
    const auto end = calls_.begin() + static_cast<std::ptrdiff_t>(std::min(most, calls_.size()));
    Calls taken{std::move_iterator{calls_.begin()}, std::move_iterator{end}};
    calls_.erase(calls_.begin(), end);
    if (!calls_.empty()) wakeUp();
    return taken;
}

} // namespace lumaro
