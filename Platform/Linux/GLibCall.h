// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Sleeper.h"

#include <gio/gio.h>

#include <expected>
#include <functional>
#include <memory>

namespace lumaro {

/// What GLib counts references of, and its errors.
struct GLibRelease {
    void operator()(gpointer object) const { g_object_unref(object); }
    void operator()(GError* error) const { g_error_free(error); }
};
template <class T>
using GLibOwned = std::unique_ptr<T, GLibRelease>;

/// Asynchronous calls of GLib's libraries, waited for one at a time, each for a bounded time. While it lives, what the
/// libraries do on this thread happens in it; no main loop is needed. Used on the thread that made it.
class GLibCalls {
public:
    /// `stop` ends the call under way, and every later one, when it is cancelled from any thread.
    explicit GLibCalls(GCancellable& stop);
    GLibCalls(const GLibCalls&) = delete;
    GLibCalls& operator=(const GLibCalls&) = delete;
    ~GLibCalls();

    using Start = std::function<void(GCancellable* cancellable, GAsyncReadyCallback then, gpointer data)>;

    /// The result of the call that `start` starts, by `finish`, the library's function for it. A call that takes longer
    /// than `limit` ends with `G_IO_ERROR_CANCELLED`.
    template <class Finish>
    auto wait(Seconds limit, const Start& start, Finish finish)
        -> std::expected<std::invoke_result_t<Finish, GAsyncResult*, GError**>, GLibOwned<GError>> {
        const auto result = await(limit, start);
        GError* error = nullptr;
        auto value = finish(result.get(), &error);
        if (error != nullptr) return std::unexpected(GLibOwned<GError>{error});
        return value;
    }

    /// Lets go of an object, and waits a moment for the libraries to let go of it, too.
    void release(GLibOwned<GObject> object);

private:
    GLibOwned<GAsyncResult> await(Seconds limit, const Start& start);

    GCancellable& stop_;
    GMainContext* context_;
};

} // namespace lumaro
