// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Fakes/ManualBackground.h"
#include "Tests/Fakes/ManualSleeper.h"
#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Fakes/RecordingLog.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace lumaro {

/// A disk that fails when the test wants it, a background and a time that go on when it says so.
class StorageFixture : public testing::Test {
protected:
    void failAt(std::string_view failing, FileFault fault) {
        disk_.fault = [=](std::string_view call) { return call == failing ? std::optional{fault} : std::nullopt; };
    }
    /// The disk changes no more once it has `calls` times.
    void endAfter(int calls) {
        disk_.fault = [calls](std::string_view call) mutable {
            const bool changes = call != "listFiles" && call != "readFile";
            return changes && calls-- <= 0 ? std::optional{FileFault::noSpace} : std::nullopt;
        };
    }

    MemoryFileSystem disk_;
    ManualSleeper sleeper_;
    ManualBackground background_;
    RecordingLog log_;
};

} // namespace lumaro
