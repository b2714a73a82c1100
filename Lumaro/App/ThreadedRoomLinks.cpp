// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/ThreadedRoomLinks.h"

#include "Lumaro/Model/DirectRoomLinks.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/SystemRandom.h"
#include "Platform/Qt/QtHttpClient.h"
#include "Platform/Qt/QtSleeper.h"
#include "Platform/Qt/QtWebSocketTransport.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>

#include <utility>

namespace lumaro {
namespace {

/// The near end of what the far thread has to say.
struct Near {
    explicit Near(RoomLink::Listener& who) : listener(who) {}

    QObject context;
    RoomLink::Listener& listener;
};

/// Everything on the line's own thread.
class FarEnd final : private RoomLink::Listener {
public:
    FarEnd(std::string outboxFolder, Log& log, Near& near)
        : links_(std::move(outboxFolder), {files_, ids_, {transport_, http_, sleeper_, clock_, log}}), near_(near) {}

    void open(RoomLinks::Address address) {
        auto opened = links_.open(std::move(address), *this);
        if (opened) {
            link_ = std::move(*opened);
        } else {
            tell([why = opened.error()](auto& listener) { listener.couldNotOpen(why); });
        }
    }
    void send(const UUID& batchId, std::vector<Op> ops) {
        if (link_) return link_->send(batchId, std::move(ops));
        notStored(batchId, FileError{FileFault::other, "", "there is no outbox"});
    }
    RoomLink* link() { return link_.get(); }

private:
    template <class Call>
    void tell(Call call) {
        QMetaObject::invokeMethod(
            &near_.context, [&listener = near_.listener, call = std::move(call)] { call(listener); },
            Qt::QueuedConnection);
    }

    void opened(std::vector<PendingBatch> waiting) override {
        tell([waiting = std::move(waiting)](auto& listener) { listener.opened(waiting); });
    }
    void couldNotOpen(const std::string& why) override {
        tell([why](auto& listener) { listener.couldNotOpen(why); });
    }
    void received(const ServerMessage& message, std::size_t pending) override {
        tell([message, pending](auto& listener) { listener.received(message, pending); });
    }
    void stateChanged(const ConnectionState& state) override {
        tell([state](auto& listener) { listener.stateChanged(state); });
    }
    void stored(const UUID& batchId, SendOutcome::Way way, std::size_t pending) override {
        tell([=](auto& listener) { listener.stored(batchId, way, pending); });
    }
    void notStored(const UUID& batchId, const SendError& why) override {
        tell([batchId, why](auto& listener) { listener.notStored(batchId, why); });
    }

    PosixFileSystem files_;
    SystemRandom ids_;
    SystemClock clock_;
    QtSleeper sleeper_;
    QtHttpClient http_;
    QtWebSocketTransport transport_;
    DirectRoomLinks links_;
    Near& near_;
    std::unique_ptr<RoomLink> link_;
};

class ThreadedRoomLink final : public RoomLink {
public:
    ThreadedRoomLink(std::string outboxFolder, Log& log, RoomLinks::Address address, RoomLink::Listener& listener)
        : near_(std::make_unique<Near>(listener)) {
        thread_.setObjectName(QStringLiteral("room"));
        far_.moveToThread(&thread_);
        thread_.start();
        onFar([this, outboxFolder = std::move(outboxFolder), &log, address = std::move(address)] {
            end_ = std::make_unique<FarEnd>(outboxFolder, log, *near_);
            end_->open(address);
        });
    }
    ThreadedRoomLink(const ThreadedRoomLink&) = delete;
    ThreadedRoomLink& operator=(const ThreadedRoomLink&) = delete;
    ~ThreadedRoomLink() override {
        // What was handed over before is done first: no act that was sent is lost.
        onFar([this] {
            end_.reset();
            thread_.quit();
        });
        thread_.wait();
        QCoreApplication::sendPostedEvents(&near_->context, QEvent::MetaCall);
    }

    void send(const UUID& batchId, std::vector<Op> ops) override {
        onFar([this, batchId, ops = std::move(ops)] { end_->send(batchId, ops); });
    }
    void sendPresence(OwnPresence presence) override {
        onLink([presence = std::move(presence)](RoomLink& link) { link.sendPresence(presence); });
    }
    void holdMedia(const UUID& id) override {
        onLink([id](RoomLink& link) { link.holdMedia(id); });
    }
    void releaseMedia(const UUID& id) override {
        onLink([id](RoomLink& link) { link.releaseMedia(id); });
    }
    void retryNow() override {
        onLink([](RoomLink& link) { link.retryNow(); });
    }

private:
    template <class Call>
    void onFar(Call call) {
        QMetaObject::invokeMethod(&far_, std::move(call), Qt::QueuedConnection);
    }
    template <class Call>
    void onLink(Call call) {
        onFar([this, call = std::move(call)] {
            if (auto* const link = end_->link()) call(*link);
        });
    }

    std::unique_ptr<Near> near_;
    QThread thread_;
    QObject far_;                 ///< lives on the thread
    std::unique_ptr<FarEnd> end_; ///< made and dropped there
};

} // namespace

std::expected<std::unique_ptr<RoomLink>, std::string> ThreadedRoomLinks::open(Address address,
                                                                              RoomLink::Listener& listener) {
    return std::make_unique<ThreadedRoomLink>(outboxFolder_, log_, std::move(address), listener);
}

} // namespace lumaro
