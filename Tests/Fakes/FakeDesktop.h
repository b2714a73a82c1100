// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/ContactCard.h"
#include "LumaroCore/Services/DownloadOrigin.h"
#include "LumaroCore/Services/LoginItem.h"
#include "LumaroCore/Services/SoundPlayer.h"
#include "LumaroCore/Services/SystemSignals.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// A login item that is set as the test says, and counts the attempts.
class FakeLoginItem final : public LoginItem {
public:
    bool isEnabled() override { return enabled; }
    [[nodiscard]] std::expected<void, std::string> enable() override { return set(true); }
    [[nodiscard]] std::expected<void, std::string> disable() override { return set(false); }

    bool enabled = false;
    /// Why every attempt fails.
    std::optional<std::string> failure;
    int attempts = 0;

private:
    std::expected<void, std::string> set(bool wanted) {
        ++attempts;
        if (failure) return std::unexpected(*failure);
        enabled = wanted;
        return {};
    }
};

/// Knows what the test says of the person.
class FakeContactCard final : public ContactCard {
public:
    ContactsAccess access() override { return ContactsAccess::authorized; }
    OwnCard ownCard() override { return card; }

    OwnCard card;
};

/// Keeps the names of what was played.
class RecordingSounds final : public SoundPlayer {
public:
    void play(std::string_view name) override { played.emplace_back(name); }

    std::vector<std::string> played;
};

/// Knows what the test says of where the program came from.
class FakeDownloadOrigin final : public DownloadOrigin {
public:
    std::vector<std::string> origins() override { return known; }

    std::vector<std::string> known;
};

/// Tells its listeners what the test says. Outlives their listening.
class ManualSystemSignals final : public SystemSignals {
public:
    [[nodiscard]] std::unique_ptr<Listening> listen(SystemListener& listener) override {
        listeners_.push_back(&listener);
        return std::make_unique<Handle>(*this, listener);
    }

    void wakeUp() { tell(&SystemListener::wokeFromSleep); }
    void changeNetwork() { tell(&SystemListener::networkChanged); }
    std::size_t listening() const { return listeners_.size(); }

private:
    class Handle final : public Listening {
    public:
        Handle(ManualSystemSignals& signals, SystemListener& listener) : signals_(signals), listener_(listener) {}
        ~Handle() override { std::erase(signals_.listeners_, &listener_); }

    private:
        ManualSystemSignals& signals_;
        SystemListener& listener_;
    };

    void tell(void (SystemListener::*what)()) {
        // From a copy: one who hears may end its own listening, or another's.
        for (auto* const listener : std::vector{listeners_}) {
            if (std::ranges::find(listeners_, listener) != listeners_.end()) (listener->*what)();
        }
    }

    std::vector<SystemListener*> listeners_;
};

} // namespace lumaro
