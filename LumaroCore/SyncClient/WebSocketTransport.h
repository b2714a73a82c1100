// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumaro {

struct WebSocketRequest {
    std::string url;
    std::vector<HttpHeader> headers;
    Seconds timeout{60}; ///< until the socket is open
};

/// Why a socket is no longer, or never was.
struct WebSocketEnd {
    /// The server answered the upgrade with something else.
    struct Refused {
        int status = 0; ///< of HTTP; 0 where the library hides it
    };
    /// The other side closed the socket, with a close frame or at the end of the stream.
    struct Closed {
        int code = 0; ///< of the close frame; 0 when there was none
    };
    /// Anything else, in the library's own words.
    struct Failed {
        std::string message;
    };

    std::variant<Refused, Closed, Failed> value;
};

/// Hears what happens to a socket: `opened`, then any of `received` and `writable`, then `ended`; or `ended` alone.
/// Called on the thread that opened the socket, never from within a call to it. Any of them may drop the connection,
/// after which none is called.
class WebSocketListener {
public:
    WebSocketListener() = default;
    WebSocketListener(const WebSocketListener&) = delete;
    WebSocketListener& operator=(const WebSocketListener&) = delete;
    virtual ~WebSocketListener() = default;

    virtual void opened() = 0;
    /// A whole text or binary message.
    virtual void received(std::string_view bytes) = 0;
    /// Some of what waited to be sent has gone.
    virtual void writable() = 0;
    virtual void ended(WebSocketEnd end) = 0;
};

/// A socket that is opening or open. Dropping it closes it with code 1000, without a further event.
class WebSocketConnection {
public:
    WebSocketConnection() = default;
    WebSocketConnection(const WebSocketConnection&) = delete;
    WebSocketConnection& operator=(const WebSocketConnection&) = delete;
    virtual ~WebSocketConnection() = default;

    /// Queues a text frame; false when the socket is not open.
    [[nodiscard]] virtual bool send(std::string_view text) = 0;
    /// Bytes queued that the system has not taken yet.
    virtual std::size_t bytesToWrite() const = 0;
};

class WebSocketTransport {
public:
    WebSocketTransport() = default;
    WebSocketTransport(const WebSocketTransport&) = delete;
    WebSocketTransport& operator=(const WebSocketTransport&) = delete;
    virtual ~WebSocketTransport() = default;

    /// Starts to open a socket. The listener outlives the connection.
    [[nodiscard]] virtual std::unique_ptr<WebSocketConnection> open(const WebSocketRequest& request,
                                                                    WebSocketListener& listener) = 0;
};

} // namespace lumaro
