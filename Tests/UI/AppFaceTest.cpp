// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/AppFace.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace lumaro {
namespace {

using Change = std::function<void(AppState&)>;

constexpr Instant now{std::chrono::hours{480'000}};

AppFace faceAfter(const Change& change) {
    AppState state;
    state.isRestoring = false;
    change(state);
    return appFace(state, now);
}

TEST(AppFaceTest, TheStageIsWhatStandsInTheWayFirst) {
    const Change onBoard = [](AppState& state) { state.token.emplace(); };
    const auto step = [](OnboardingStep at) { return [at](AppState& state) { state.onboarding = at; }; };
    const std::vector<std::pair<Stage, std::vector<Change>>> cases{
        {Stage::restoring, {[](AppState& state) { state.isRestoring = true; }}},
        {Stage::locked, {[](AppState& state) { state.keychainLocked = state.isRestoring = state.wasPaired = true; }}},
        {Stage::asksForFile, {onBoard, [](AppState& state) { state.secretPlace = SecretPlace::asking; }}},
        {Stage::board, {[](AppState& state) { state.secretPlace = SecretPlace::file; }, onBoard}},
        {Stage::welcome, {}},
        {Stage::welcome, {step(OnboardingStep::welcome)}},
        {Stage::makeItYours, {step(OnboardingStep::makeItYours)}},
        {Stage::makeItYours, {step(OnboardingStep::bringThemOver)}}, // nobody comes to no board
        {Stage::bringThemOver, {onBoard, step(OnboardingStep::bringThemOver)}},
        {Stage::board, {onBoard, step(OnboardingStep::welcome)}},
        {Stage::offBoard, {step(OnboardingStep::welcome), [](AppState& state) { state.wasPaired = true; }}},
        {Stage::refused, {onBoard, [](AppState& state) { state.connectionRejected = true; }}},
    };
    for (const auto& [stage, changes] : cases) {
        const auto face = faceAfter([&](AppState& state) {
            for (const auto& change : changes) change(state);
        });
        EXPECT_EQ(face.stage, stage) << face.stageName().toStdString();
        EXPECT_EQ(face.needsPerson(), stage != Stage::board && stage != Stage::restoring);
    }
}

TEST(AppFaceTest, ACodeSaysHowLongItWorks) {
    const std::vector<std::pair<std::chrono::seconds, const char*>> cases{
        {std::chrono::seconds{600}, "works for 10 more minutes"},
        {std::chrono::seconds{541}, "works for 10 more minutes"},
        {std::chrono::seconds{540}, "works for 9 more minutes"},
        {std::chrono::seconds{60}, "works for one more minute"},
        {std::chrono::seconds{1}, "works for one more minute"},
        {std::chrono::seconds{0}, "that code timed out"},
        {std::chrono::seconds{-9}, "that code timed out"}};
    for (const auto& [left, text] : cases) {
        const auto face = faceAfter([&](AppState& state) { state.shareCode = ShareCode{"012345", now + left, {}}; });
        EXPECT_EQ(face.code, QStringLiteral("012 345"));
        EXPECT_EQ(face.codeWorks.toStdString(), text);
        EXPECT_EQ(face.isCodeOver, left <= std::chrono::seconds{0});
    }
}

TEST(AppFaceTest, ThePairingIsShownAsItStands) {
    const auto choosing = faceAfter(
        [](AppState& state) { state.pairing.value = PairingPhase::Choosing{{"ann", std::nullopt}, PartnerID::b}; });
    EXPECT_TRUE(choosing.isChoosing && choosing.needsPerson());
    EXPECT_EQ(choosing.firstName, QStringLiteral("ann"));
    EXPECT_EQ(choosing.secondName, QStringLiteral("the one who came along"));
    EXPECT_EQ(choosing.suggested, 1);
    const auto failed = faceAfter([](AppState& state) {
        state.token.emplace();
        state.pairing.value = PairingPhase::Failed{"no luck"};
    });
    EXPECT_EQ(failed.failure, QStringLiteral("no luck"));
    EXPECT_TRUE(failed.needsPerson()) << "it would be told nowhere";
}

TEST(AppFaceTest, AnArrivalIsGreetedByHowItCame) {
    const std::vector<std::pair<JoinStatus, const char*>> cases{
        {JoinStatus::joined, "bo is on the board 💌"},
        {JoinStatus::rejoined, "welcome back — bo is on the board 💌"},
        {JoinStatus::already, "you're on the board with bo already 💌"}};
    for (const auto& [status, text] : cases) {
        const auto face = faceAfter([&](AppState& state) { state.arrival = Arrival{"bo", status, now}; });
        EXPECT_EQ(face.greeting.toStdString(), text);
    }
}

} // namespace
} // namespace lumaro
