// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/CityWindow/CityRequest.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <memory>
#include <string>

namespace lumaro {

/// No picture was painted.
struct CityFailure {
    std::string message; ///< one line for the log; no key, no position
};

/// Has a server's city page drawn. Not every computer can.
class CityPainter {
public:
    static constexpr std::size_t maxPictureBytes = std::size_t{8} * 1024 * 1024;

    /// A picture that is being painted. Dropping it ends that: its `then` is not called any more.
    class Run {
    public:
        Run() = default;
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;
        virtual ~Run() = default;
    };
    /// A PNG as the painter gave it, unread, of at most `maxPictureBytes`.
    using Answer = std::expected<std::string, CityFailure>;

    CityPainter() = default;
    CityPainter(const CityPainter&) = delete;
    CityPainter& operator=(const CityPainter&) = delete;
    virtual ~CityPainter() = default;

    /// Whether it can paint at all here; without it, nothing is asked of anybody.
    virtual bool isInstalled() = 0;
    /// Calls `then` once, on the caller's thread and never from within this call, in less than a minute. `then` may
    /// drop its own run.
    [[nodiscard]] virtual std::unique_ptr<Run> paint(CityRequest request,
                                                     std::move_only_function<void(Answer)> then) = 0;
};

} // namespace lumaro
