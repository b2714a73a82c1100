// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/InkHistory.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace lumaro {
namespace {

using Difference = std::vector<InkStroke>::difference_type;

} // namespace

void InkHistory::record(std::vector<InkStroke> now) {
    const auto front = std::ranges::mismatch(strokes_, now);
    if (front.in1 == strokes_.end() && front.in2 == now.end()) return;
    const auto at = front.in1 - strokes_.begin();
    auto wasEnd = strokes_.end();
    auto nowEnd = now.end();
    while (wasEnd != strokes_.begin() + at && nowEnd != now.begin() + at && *(wasEnd - 1) == *(nowEnd - 1)) {
        --wasEnd;
        --nowEnd;
    }
    Step step{.at = static_cast<std::size_t>(at),
              .put = static_cast<std::size_t>(nowEnd - now.begin() - at),
              .taken = {strokes_.begin() + at, wasEnd}};
    done_.push_back(std::move(step));
    if (done_.size() > limit) done_.pop_front();
    undone_.clear();
    strokes_ = std::move(now);
}

InkHistory::Step InkHistory::replaced(const Step& step) {
    const auto from = strokes_.begin() + static_cast<Difference>(step.at);
    const auto to = from + static_cast<Difference>(step.put);
    Step back{.at = step.at, .put = step.taken.size(), .taken = {from, to}};
    strokes_.insert(strokes_.erase(from, to), step.taken.begin(), step.taken.end());
    return back;
}

void InkHistory::step(Stack& from, Stack& to) {
    if (from.empty()) return;
    to.push_back(replaced(from.back()));
    from.pop_back();
}

} // namespace lumaro
