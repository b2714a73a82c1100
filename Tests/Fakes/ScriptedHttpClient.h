// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"

#include <list>
#include <vector>

namespace lumaro {

/// Requests that wait until the test answers them. Outlives its calls.
class ScriptedHttpClient final : public HttpClient {
public:
    [[nodiscard]] std::unique_ptr<Call> send(HttpRequest request, std::move_only_function<void(Answer)> then) override {
        requests.push_back(std::move(request));
        const auto place = open_.insert(open_.end(), {++made_, std::move(then)});
        return std::make_unique<Handle>(*this, place->number);
    }

    /// How many wait for an answer.
    std::size_t open() const { return open_.size(); }
    /// Answers the oldest that waits; false when none does.
    bool answer(Answer answer) {
        if (open_.empty()) return false;
        auto then = std::move(open_.front().then);
        open_.pop_front();
        then(std::move(answer));
        return true;
    }

    /// All there ever were, answered or not.
    std::vector<HttpRequest> requests;

private:
    struct Open {
        std::size_t number;
        std::move_only_function<void(Answer)> then;
    };
    class Handle final : public Call {
    public:
        Handle(ScriptedHttpClient& client, std::size_t number) : client_(client), number_(number) {}
        ~Handle() override {
            client_.open_.remove_if([this](const Open& open) { return open.number == number_; });
        }

    private:
        ScriptedHttpClient& client_;
        std::size_t number_;
    };

    std::list<Open> open_;
    std::size_t made_ = 0;
};

} // namespace lumaro
