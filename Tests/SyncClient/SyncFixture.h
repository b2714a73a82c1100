// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/SyncClient/SyncClient.h"
#include "Samples/Samples.h"
#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Fakes/FakeNetwork.h"
#include "Tests/Fakes/ManualClock.h"
#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Fakes/RecordingLog.h"
#include "Tests/Fakes/ScriptedHttpClient.h"

#include <gtest/gtest.h>

namespace lumaro {

/// A device's surroundings, in the hands of the test.
class SyncFixture : public testing::Test {
protected:
    SyncFixture() {
        disk_.fault = [this](std::string_view call) {
            return call == "writeFile" || call == "removeFile" ? fault_ : std::nullopt;
        };
    }
    static constexpr std::string_view folder = "/home/bo/outbox";

    void TearDown() override {
        for (const auto& line : log_.lines) EXPECT_EQ(line.find(token_.secret), std::string::npos) << line;
    }

    DurableOutbox outbox() { return DurableOutbox::open(disk_, ids_, std::string{folder}).value(); }
    SyncClient::Ports ports() { return {network_, http_, sleeper_, clock_, log_}; }
    static std::vector<Op> painted(BackgroundID paper = BackgroundID::sage) { return {{SetBackground{paper}}}; }
    static std::string ack(const UUID& id) { return R"({"v":1,"type":"ack","batchId":")" + id.upperString() + R"("})"; }
    std::size_t filesLeft() { return disk_.listFiles(std::string{folder})->size(); }

    MemoryFileSystem disk_;
    std::optional<FileFault> fault_; ///< of every call that writes or removes
    CountingUUIDs ids_{1000};
    FakeNetwork network_;
    ScriptedHttpClient http_;
    ManualSleeper sleeper_;
    ManualClock clock_{sleeper_, samples::noon};
    RecordingLog log_;
    CoupleToken token_ = CoupleToken::parse("lm1.abc.b.hush7").value();
};

} // namespace lumaro
