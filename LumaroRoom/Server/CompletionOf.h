// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Server/Asio.h"

#include <functional>
#include <utility>

namespace lumaro {

/// Lets a coroutine wait for a call that answers through a function: `start` gets that function, which is called once,
/// on the coroutine's thread.
template <class T, class Start>
Awaitable<T> completionOf(Executor executor, Start start) {
    return asio::async_initiate<const asio::use_awaitable_t<Executor>, void(T)>(
        [executor](auto handler, Start call) {
            // A coroutine must not go on before it has stopped: not even a call that answers at once wakes it here.
            asio::post(executor, [handler = std::move(handler), call = std::move(call)]() mutable {
                call(std::move_only_function<void(T)>{
                    [handler = std::move(handler)](T result) mutable { std::move(handler)(std::move(result)); }});
            });
        },
        asio::use_awaitable_t<Executor>{}, std::move(start));
}

} // namespace lumaro
