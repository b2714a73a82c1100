// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the files that know Beast share. No other file includes this: each that does compiles for a quarter of a
// minute.

#include "LumaroRoom/Server/Asio.h"
#include "LumaroRoom/Server/HttpDate.h"
#include "LumaroRoom/Server/ServerHttp.h"
#include "LumaroRoom/Server/Shard.h"

#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

#include <memory>
#include <string>

namespace lumaro {

namespace beast = boost::beast;
namespace http = boost::beast::http;

using TlsSocket = asio::ssl::stream<TcpSocket>;
using BeastRequest = http::request<http::string_body>;
using BeastResponse = http::response<http::string_body>;

/// A request to open a room's socket.
struct UpgradeRequest {
    BeastRequest request;
    std::string coupleId;
    std::string token;
    IpAddress client;
};

/// `now` is for "Date", which says when it was made (RFC 9110, 6.6.1).
inline BeastResponse beastResponse(ServerResponse response, unsigned version, bool keepsAlive, Instant now) {
    BeastResponse written{static_cast<http::status>(response.status), version};
    written.set(http::field::date, httpDate(now));
    for (const auto& header : response.headers) written.set(header.name, header.value);
    written.keep_alive(keepsAlive);
    written.body() = std::move(response.body);
    written.prepare_payload();
    return written;
}

/// Opens a room's socket on a connection of the shard, or refuses it.
void openRoomSocket(Shard& shard, TcpSocket stream, UpgradeRequest upgrade);
void openRoomSocket(Shard& shard, std::unique_ptr<TlsSocket> stream, UpgradeRequest upgrade);

} // namespace lumaro
