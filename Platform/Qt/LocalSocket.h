// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Sleeper.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace lumaro {

/// Answers the lines that other processes of the same user send to a socket in the file system (0600), a line each.
/// In the Qt event loop of the thread that made it.
class LocalSocketServer {
public:
    /// Longer lines are not read: the caller is cut off.
    static constexpr std::size_t maxLineBytes = std::size_t{16} * 1024 * 1024;

    /// Sends the answer, once; nothing when the caller has gone.
    using Reply = std::move_only_function<void(std::string_view line)>;
    using Handler = std::function<void(std::string line, Reply reply)>;

    /// Listens at `path`, in place of a socket that an ended process left there: only the owner of its folder may call
    /// it. The error is the system's words.
    [[nodiscard]] static std::expected<std::unique_ptr<LocalSocketServer>, std::string> listen(const std::string& path,
                                                                                               Handler handler);

    LocalSocketServer(const LocalSocketServer&) = delete;
    LocalSocketServer& operator=(const LocalSocketServer&) = delete;
    /// Takes the socket away. Calls that were not answered end without an answer.
    ~LocalSocketServer();

private:
    struct State;
    explicit LocalSocketServer(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

/// A line sent to such a socket, and the wait for its answer.
class LocalSocketCall {
public:
    enum class Fault : std::uint8_t {
        unreachable, ///< nobody listens; the line was not sent
        cut,         ///< the connection ended, or time ran out, before the answer: the line may have been read
    };
    using Answer = std::expected<std::string, Fault>;

    /// Calls `then` once, never from within the constructor. `then` may drop the call; dropping it cancels it.
    LocalSocketCall(const std::string& path, std::string_view line, Seconds timeout,
                    std::move_only_function<void(Answer)> then);
    LocalSocketCall(const LocalSocketCall&) = delete;
    LocalSocketCall& operator=(const LocalSocketCall&) = delete;
    ~LocalSocketCall();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace lumaro
