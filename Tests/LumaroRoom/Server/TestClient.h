// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

enum class Layer : std::uint8_t { plain, tls };

/// A connection to a port of this machine, byte by byte. What the peer does not answer in time counts as its end.
class Line {
public:
    explicit Line(std::uint16_t port, Layer layer = Layer::plain);
    ~Line();
    Line(Line&& other) noexcept;
    Line& operator=(Line&&) = delete;

    bool write(std::string_view bytes);
    /// What comes next, but no more than `most`; empty at the end.
    std::string read(std::size_t most);
    void close();

private:
    struct State;
    std::unique_ptr<State> state_;
};

struct Reply {
    int status = 0;                             ///< 0 when there was no answer
    std::map<std::string, std::string> headers; ///< names in lower case
    std::string body;
};

struct Ask {
    std::string method = "GET";
    std::string target = "/";
    std::string token = {};
    std::string body = {};
    std::vector<HttpHeader> headers = {};
};

/// The request's text with the headers that every request has.
std::string requestText(const Ask& ask);
Reply readReply(Line& line);
/// Asks on a connection of its own.
Reply ask(std::uint16_t port, const Ask& ask, Layer layer = Layer::plain);

/// A room's socket, as a device holds it.
class DeviceSocket {
public:
    DeviceSocket(std::uint16_t port, const std::string& coupleId, const std::string& token,
                 std::vector<HttpHeader> headers = {}, Layer layer = Layer::plain);

    /// The answer to the upgrade: status 101 when the socket is open.
    const Reply& opening() const { return opening_; }

    bool send(std::string_view payload, std::uint8_t opcode = text);
    /// The next text frame; none when the socket was closed instead.
    std::optional<std::string> receive();
    /// The next text frame with this in it, others passed over.
    std::optional<std::string> receiveWith(std::string_view part);
    /// Why the room closed the socket, all frames before passed over; 0 when it only went away. Closes this end too.
    int closeCode();

    static constexpr std::uint8_t text = 1;
    static constexpr std::uint8_t goodbye = 8;

private:
    std::optional<std::string> exactly(std::size_t count);

    Line line_;
    Reply opening_;
    std::string unread_;
    int closeCode_ = 0;
};

} // namespace lumaro
