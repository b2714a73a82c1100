// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Server/Asio.h"

namespace boost::asio::ssl {
class context;
}

namespace lumaro {

class Shard;

/// Serves HTTP on a new connection, over TLS when there is a context for it, until the connection ends or becomes a
/// room's socket. On the shard's thread; the context outlives the shard.
void serveConnection(Shard& shard, TcpSocket socket, asio::ssl::context* tls);

} // namespace lumaro
