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
    return appFace(state, now, false);
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

TEST(AppFaceTest, WhatFailedOnABoardStandsInTheWay) {
    const auto failed = faceAfter([](AppState& state) {
        state.token.emplace();
        state.pairing.value = PairingPhase::Failed{"no luck"};
    });
    EXPECT_EQ(failed.failure, QStringLiteral("no luck"));
    EXPECT_TRUE(failed.needsPerson()) << "it would be told nowhere";
}

} // namespace
} // namespace lumaro
