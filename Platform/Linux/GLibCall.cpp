// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/GLibCall.h"

#include <utility>

namespace lumaro {
namespace {

// Something that may happen while a call waits, in the context of the call.
struct SourceRelease {
    void operator()(GSource* source) const {
        g_source_destroy(source);
        g_source_unref(source);
    }
};
using Source = std::unique_ptr<GSource, SourceRelease>;

Source attached(GSource* source, GSourceFunc then, gpointer data, GMainContext* context) {
    g_source_set_callback(source, then, data, nullptr);
    g_source_attach(source, context);
    return Source{source};
}

gboolean cancel(gpointer cancellable) {
    g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
    return G_SOURCE_REMOVE;
}

gboolean cancelOther(GCancellable* /*stop*/, gpointer cancellable) {
    return cancel(cancellable);
}

// Milliseconds that the libraries get for it.
constexpr int releaseTicks = 50;

gboolean countTick(gpointer ticks) {
    ++*static_cast<int*>(ticks);
    return G_SOURCE_CONTINUE;
}

bool isAlive(GWeakRef& watched) {
    const GLibOwned<GObject> object{static_cast<GObject*>(g_weak_ref_get(&watched))};
    return object != nullptr;
}

void keepResult(GObject* /*source*/, GAsyncResult* result, gpointer kept) {
    static_cast<GLibOwned<GAsyncResult>*>(kept)->reset(G_ASYNC_RESULT(g_object_ref(result)));
}

} // namespace

GLibCalls::GLibCalls(GCancellable& stop) : stop_(stop), context_(g_main_context_new()) {
    g_main_context_push_thread_default(context_);
}

GLibCalls::~GLibCalls() {
    // What the libraries still do behind their calls.
    while (g_main_context_iteration(context_, FALSE) != FALSE) {
    }
    g_main_context_pop_thread_default(context_);
    g_main_context_unref(context_);
}

// Answers that nobody waits for may still be on their way. One who is not of this thread may hold the object for good.
void GLibCalls::release(GLibOwned<GObject> object) {
    GWeakRef watched;
    g_weak_ref_init(&watched, object.get());
    object.reset();
    int ticks = 0;
    const auto timer = attached(g_timeout_source_new(1), countTick, &ticks, context_);
    while (ticks < releaseTicks && isAlive(watched)) {
        g_main_context_iteration(context_, TRUE);
    }
    g_weak_ref_clear(&watched);
}

// A call that was cancelled still comes to its result, soon.
GLibOwned<GAsyncResult> GLibCalls::await(Seconds limit, const Start& start) {
    const GLibOwned<GCancellable> cancellable{g_cancellable_new()};
    const auto milliseconds = static_cast<guint>(std::chrono::ceil<std::chrono::milliseconds>(limit).count());
    const auto timer = attached(g_timeout_source_new(milliseconds), cancel, cancellable.get(), context_);
    // Through the context: what a library does when it is cancelled must happen on this thread.
    const auto stop =
        attached(g_cancellable_source_new(&stop_), G_SOURCE_FUNC(cancelOther), cancellable.get(), context_);
    GLibOwned<GAsyncResult> result;
    start(cancellable.get(), keepResult, &result);
    while (!result) g_main_context_iteration(context_, TRUE);
    return result;
}

} // namespace lumaro
