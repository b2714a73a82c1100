// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/ScriptValue.h"
#include "LumaroCore/Protocol/LumaroCoreError.h"

#include <expected>
#include <functional>
#include <memory>
#include <string_view>

namespace lumaro {

/// Runs the scripts that read music players (`MusicScripts`). On the main thread, which it never holds up.
class ScriptRunner {
public:
    /// A script under way. Dropping it means that its `then` is not called any more.
    class Run {
    public:
        Run() = default;
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;
        virtual ~Run() = default;
    };
    /// A failure is a `LumaroCoreError::ScriptFailed`.
    using Answer = std::expected<ScriptValue, LumaroCoreError>;

    ScriptRunner() = default;
    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;
    virtual ~ScriptRunner() = default;

    /// Calls `then` once, never from within this call, and within a second or so whatever the player does. `then` may
    /// drop its own run.
    [[nodiscard]] virtual std::unique_ptr<Run> run(std::string_view source,
                                                   std::move_only_function<void(Answer)> then) = 0;
};

} // namespace lumaro
