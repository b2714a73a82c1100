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
        fault_ = [=](std::string_view call, const std::string&) {
            return call == failing ? std::optional{fault} : std::nullopt;
        };
    }
    /// The disk changes no more once it has `calls` times.
    void endAfter(int calls) {
        fault_ = [calls](std::string_view call, const std::string&) mutable {
            const bool changes = call != "listFiles" && call != "readFile";
            return changes && calls-- <= 0 ? std::optional{FileFault::noSpace} : std::nullopt;
        };
    }

    MemoryFileSystem disk_;
    FaultyFileSystem::Fault fault_;
    FaultyFileSystem files_{disk_, [this](std::string_view call, const std::string& path) {
                                return fault_ ? fault_(call, path) : std::nullopt;
                            }};
    ManualSleeper sleeper_;
    ManualBackground background_;
    RecordingLog log_;
};

} // namespace lumaro
