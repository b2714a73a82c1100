// SPDX-License-Identifier: Apache-2.0
#pragma once

// The event loop's types with the executor named, not type-erased: that saves a tenth of the time of a frame.
// For the .cpp files of the network and what they share; costs seconds to compile.

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/basic_socket_acceptor.hpp>
#include <boost/asio/basic_stream_socket.hpp>
#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/dispatch.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <chrono>

namespace lumaro {

namespace asio = boost::asio;
using Tcp = asio::ip::tcp;
using boost::system::error_code;

using Executor = asio::io_context::executor_type;
using TcpSocket = asio::basic_stream_socket<Tcp, Executor>;
using TcpAcceptor = asio::basic_socket_acceptor<Tcp, Executor>;
using TcpResolver = asio::ip::basic_resolver<Tcp, Executor>;
using SteadyClock = std::chrono::steady_clock;
using SteadyTimer = asio::basic_waitable_timer<SteadyClock, asio::wait_traits<SteadyClock>, Executor>;

template <class T>
using Awaitable = asio::awaitable<T, Executor>;

/// Completes a coroutine's wait with a tuple that begins with the error: nothing is thrown.
inline constexpr asio::as_tuple_t<asio::use_awaitable_t<Executor>> asTuple{};

} // namespace lumaro
