// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/HomeRoom.h"
#include "LumaroCore/Services/RoomsNearby.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// A room that starts when the test says so.
class FakeHomeRoom final : public HomeRoom {
public:
    bool isInstalled() override { return installed; }
    void start(std::uint16_t port, Started then) override {
        asked.push_back(port);
        then_ = std::move(then);
    }
    void stop() override {
        then_ = nullptr;
        ++stops;
    }

    void answer(std::expected<Running, std::string> outcome) {
        if (auto then = std::exchange(then_, nullptr)) then(std::move(outcome));
    }

    bool installed = true;
    std::vector<std::uint16_t> asked; ///< the ports
    int stops = 0;

private:
    Started then_;
};

/// A network in the test's hands. Outlives what was asked of it.
class FakeRoomsNearby final : public RoomsNearby {
public:
    std::unique_ptr<Handle> announce(const std::string& name, std::uint16_t port) override {
        announced.push_back(name + ":" + std::to_string(port));
        return std::make_unique<Counted>(announcing);
    }
    std::unique_ptr<Handle> browse(Heard heard) override {
        heard_ = std::move(heard);
        return std::make_unique<Counted>(browsing);
    }
    void tell(const std::vector<NearbyRoom>& rooms) {
        if (browsing > 0) heard_(rooms);
    }

    std::vector<std::string> announced; ///< ever, with their ports
    int announcing = 0;                 ///< at this moment
    int browsing = 0;

private:
    class Counted final : public Handle {
    public:
        explicit Counted(int& count) : count_(count) { ++count_; }
        Counted(const Counted&) = delete;
        Counted& operator=(const Counted&) = delete;
        ~Counted() override { --count_; }

    private:
        int& count_;
    };

    Heard heard_;
};

} // namespace lumaro
