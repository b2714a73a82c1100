// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Server/Asio.h"

#include <boost/asio/async_result.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/bind_handler.hpp>
#include <boost/beast/core/role.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace lumaro {

/// A stream that gathers what is written to it and hands it on in one piece once the event loop has nothing more for
/// it: the frames that a commit lets out to a socket cost one system call, not one each. A write is done once it is
/// gathered; while a whole piece is gathered already the write waits, so that a slow reader is felt. Reads go straight
/// through.
///
/// One write at a time, on the thread of the loop. What was gathered goes even when the stream is gone.
template <class Next>
class CorkedStream {
public:
    using next_layer_type = Next;
    using executor_type = typename Next::executor_type;

    explicit CorkedStream(Next stream) : state_(std::make_shared<State>(std::move(stream))) {}

    Next& next_layer() { return state_->next; }
    const Next& next_layer() const { return state_->next; }
    executor_type get_executor() { return state_->next.get_executor(); }

    template <class Buffers, class Token>
    auto async_read_some(const Buffers& buffers, Token&& token) {
        return state_->next.async_read_some(buffers, std::forward<Token>(token));
    }

    template <class Buffers, class Token>
    auto async_write_some(const Buffers& buffers, Token&& token) {
        return asio::async_initiate<Token, void(error_code, std::size_t)>(
            [this](auto handler, const Buffers& written) {
                const auto size = state_->gather(written);
                auto done = boost::beast::bind_front_handler(std::move(handler), state_->fault, size);
                if (state_->gathered.size() < pieceBytes) return asio::post(get_executor(), std::move(done));
                state_->waiting = std::move(done);
            },
            token, buffers);
    }

    /// Calls `then` once all that was written has been handed on.
    void whenSent(std::move_only_function<void()> then) {
        if (!state_->isBusy) return then();
        state_->sent = std::move(then);
    }

private:
    static constexpr std::size_t pieceBytes = std::size_t{64} * 1024;
    // An idle stream gives back what a large piece took.
    static constexpr std::size_t keptBytes = 1024;

    struct State : std::enable_shared_from_this<State> {
        explicit State(Next stream) : next(std::move(stream)) {}

        template <class Buffers>
        std::size_t gather(const Buffers& buffers) {
            const auto size = asio::buffer_size(buffers);
            const auto before = gathered.size();
            gathered.resize(before + size);
            asio::buffer_copy(asio::buffer(gathered) + before, buffers);
            if (!std::exchange(isBusy, true)) settle(0);
            return size;
        }

        // A turn of the loop that brings nothing more is the end of a piece.
        void settle(std::size_t before) {
            if (gathered.size() == before || gathered.size() >= pieceBytes) return handOn();
            asio::post(next.get_executor(),
                       [self = this->shared_from_this(), size = gathered.size()] { self->settle(size); });
        }

        void handOn() {
            leaving.swap(gathered);
            asio::async_write(next, asio::buffer(leaving),
                              [self = this->shared_from_this()](error_code error, std::size_t) { self->left(error); });
        }

        void left(error_code error) {
            if (error) fault = error;
            leaving.clear();
            if (leaving.capacity() > keptBytes) leaving.shrink_to_fit();
            if (fault) gathered.clear();
            isBusy = !gathered.empty();
            if (isBusy) settle(0);
            if (waiting) std::exchange(waiting, nullptr)();
            if (isBusy || !sent) return;
            std::exchange(sent, nullptr)();
        }

        Next next;
        std::string gathered;
        std::string leaving;
        bool isBusy = false; ///< something is gathered, or leaving
        error_code fault;    ///< that the stream met; later writes end with it
        std::move_only_function<void()> waiting;
        std::move_only_function<void()> sent;
    };

    std::shared_ptr<State> state_;
};

// How Beast ends the connection under a WebSocket: after the last frame has gone.

template <class Next>
void teardown(boost::beast::role_type role, CorkedStream<Next>& stream, error_code& error) {
    using boost::beast::websocket::teardown;
    teardown(role, stream.next_layer(), error);
}

template <class Next, class Handler>
void async_teardown(boost::beast::role_type role, CorkedStream<Next>& stream, Handler&& handler) {
    stream.whenSent([role, &stream, handler = std::forward<Handler>(handler)]() mutable {
        using boost::beast::websocket::async_teardown;
        async_teardown(role, stream.next_layer(), std::move(handler));
    });
}

} // namespace lumaro
