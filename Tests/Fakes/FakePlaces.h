// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/PositionSource.h"
#include "LumaroCore/Location/ReverseGeocoder.h"
#include "LumaroCore/Services/SystemZone.h"
#include "LumaroCore/Support/Sleeper.h"

#include <list>
#include <map>
#include <utility>
#include <vector>

namespace lumaro {

/// A computer that is where the test says, when the test says so. Outlives its searches.
class FakePositions final : public PositionSource {
public:
    [[nodiscard]] std::unique_ptr<Search> search(HerePrecision precision,
                                                 std::move_only_function<void(Answer)> then) override {
        precisions.push_back(precision);
        const auto place = open_.insert(open_.end(), {static_cast<int>(precisions.size()), std::move(then)});
        auto search = std::make_unique<Handle>(*this, place->number);
        if (time_ != nullptr) search->wait = time_->wait(Seconds{0.02}, [this] { answer(truth()); });
        return search;
    }

    /// From now on it answers by itself, with what is true.
    void answerBy(Sleeper& time) { time_ = &time; }
    std::function<Answer()> truth;

    std::size_t open() const { return open_.size(); }
    /// Answers every search under way.
    void answer(Answer answer) {
        for (auto& one : std::exchange(open_, {})) one.then(answer);
    }
    void answer(Coordinates position) { answer({LocationAccess::authorized, position}); }

    std::vector<HerePrecision> precisions; ///< of all searches there ever were

private:
    struct Open {
        int number;
        std::move_only_function<void(Answer)> then;
    };
    class Handle final : public Search {
    public:
        Handle(FakePositions& positions, int number) : positions_(positions), number_(number) {}
        ~Handle() override {
            positions_.open_.remove_if([this](const Open& open) { return open.number == number_; });
        }

        std::unique_ptr<Sleeper::Wait> wait;

    private:
        FakePositions& positions_;
        int number_;
    };

    std::list<Open> open_;
    Sleeper* time_ = nullptr;
};

/// Knows the names that it was told, at once, and counts the questions.
class FakeGeocoder final : public ReverseGeocoder {
public:
    [[nodiscard]] std::unique_ptr<Request> name(Coordinates position,
                                                std::move_only_function<void(PlaceFacts)> then) override {
        ++questions;
        const auto at = rounded(position, 1);
        const auto found = places.find({at.latitude, at.longitude});
        then(found == places.end() ? PlaceFacts{} : found->second);
        return std::make_unique<Request>();
    }

    /// By position to one decimal.
    std::map<std::pair<double, double>, PlaceFacts> places{
        {{38.7, -9.1}, {.subLocality = "Alfama", .locality = "Lisboa", .name = {}, .timeZone = "Europe/Lisbon"}},
        {{52.5, 13.4}, {.subLocality = {}, .locality = "Berlin", .name = {}, .timeZone = "Europe/Berlin"}}};
    int questions = 0;
};

class FakeZone final : public SystemZone {
public:
    std::string identifier() override { return zone; }
    bool isKnown(std::string_view name) override { return name.starts_with("Europe/") || name.starts_with("Asia/"); }

    std::string zone = "Europe/Berlin";
};

} // namespace lumaro
