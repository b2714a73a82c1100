// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/StatusLine.h"

#include <gtest/gtest.h>

#include <functional>

namespace lumaro {
namespace {

AppState onBoard(ConnectionState connection = {ConnectionState::Connected{}}) {
    AppState state;
    state.isRestoring = false;
    state.wasPaired = true;
    state.token.emplace();
    state.connection = connection;
    state.partnerDisplayName = "bo";
    return state;
}

AppState with(AppState state, const std::function<void(AppState&)>& change) {
    change(state);
    return state;
}

TEST(StatusLineTest, OneLineTellsHowThingsStand) {
    const auto alone = with(onBoard(), [](auto& state) { state.partnerDisplayName.clear(); });
    const auto unpaired = with(onBoard(), [](auto& state) { state.token.reset(); });
    const auto offline = onBoard({ConnectionState::Waiting{}});
    const std::vector<std::pair<const char*, AppState>> states{
        {"one moment…", {}},
        {"bo is away", onBoard()},
        {"bo is here", with(onBoard(), [](auto& state) { state.presence.isPartnerOnline = true; })},
        {"waiting for your person", alone},
        {"they're here", with(alone, [](auto& state) { state.presence.isPartnerOnline = true; })},
        {"connecting…", onBoard({ConnectionState::Connecting{}})},
        {"offline", offline},
        {"offline · 1 change waiting", with(offline, [](auto& state) { state.pendingBatches = 1; })},
        {"offline · 3 changes waiting", with(offline, [](auto& state) { state.pendingBatches = 3; })},
        {"the room no longer knows this mac", with(offline, [](auto& state) { state.connectionRejected = true; })},
        {"this mac is off the board", unpaired},
        {"no board yet", with(unpaired, [](auto& state) { state.wasPaired = false; })},
        {"the keychain didn't open", with(unpaired, [](auto& state) { state.keychainLocked = true; })},
        {"there's a question for you", with(unpaired, [](auto& state) { state.secretPlace = SecretPlace::asking; })},
    };
    for (const auto& [line, state] : states) {
        EXPECT_EQ(statusLine(state, false).toStdString(), line);
    }
}

TEST(StatusLineTest, WhileItTriesAgainItIsOfflineUntilItIsConnected) {
    const ConnectionState connecting{ConnectionState::Connecting{}};
    const ConnectionState waiting{ConnectionState::Waiting{}};
    const std::vector<std::pair<ConnectionState, const char*>> steps{
        {{ConnectionState::Idle{}}, "connecting…"},
        {connecting, "connecting…"},
        {waiting, "offline · 2 changes waiting"},
        {connecting, "offline · 2 changes waiting"},
        {waiting, "offline · 2 changes waiting"},
        {connecting, "offline · 2 changes waiting"},
        {{ConnectionState::Connected{}}, "bo is away"},
        {waiting, "offline · 2 changes waiting"},
        {{ConnectionState::Stopped{}}, "offline · 2 changes waiting"},
        {connecting, "connecting…"},
    };
    bool again = false;
    for (std::size_t step = 0; step < steps.size(); ++step) {
        const auto& [connection, line] = steps[step];
        again = isRetrying(again, connection);
        const auto state = with(onBoard(connection), [](auto& it) { it.pendingBatches = 2; });
        EXPECT_EQ(statusLine(state, again).toStdString(), line) << "step " << step;
    }
}

} // namespace
} // namespace lumaro
