// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtMailbox.h"

#include <utility>

namespace lumaro {
namespace {

// So many calls in one turn of the event loop: others want theirs.
constexpr int callsPerTurn = 64;

} // namespace

QtMailbox::QtMailbox() : bell_([this] { takeTurn(); }) {
}

QtMailbox::~QtMailbox() {
    if (isGone_ != nullptr) *isGone_ = true;
}

// Rung for the first that waits only: the turn that takes it sees to those behind it.
void QtMailbox::post(Call call) {
    const std::scoped_lock lock{mutex_};
    calls_.push_back(std::move(call));
    if (calls_.size() == 1) bell_.ring();
}

void QtMailbox::empty() {
    while (doNext()) {
    }
}

void QtMailbox::takeTurn() {
    for (int i = 0; i < callsPerTurn; ++i) {
        if (!doNext()) return;
    }
    const std::scoped_lock lock{mutex_};
    if (!calls_.empty()) bell_.ring();
}

// Whether the box is still there, and another call may wait in it.
bool QtMailbox::doNext() {
    auto call = next();
    if (!call) return false;
    bool isGone = false;
    auto* const outer = std::exchange(isGone_, &isGone);
    (*call)();
    if (isGone) {
        if (outer != nullptr) *outer = true;
        return false;
    }
    isGone_ = outer;
    return true;
}

std::optional<QtMailbox::Call> QtMailbox::next() {
    const std::scoped_lock lock{mutex_};
    if (calls_.empty()) return std::nullopt;
    auto call = std::move(calls_.front());
    calls_.pop_front();
    return call;
}

} // namespace lumaro
