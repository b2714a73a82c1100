// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/ThreadedRoomLinks.h"

#include "Platform/Qt/QtMailbox.h"

#include <QEventLoop>
#include <QThread>

#include <future>
#include <thread>
#include <utility>

namespace lumaro {
namespace {

/// Everything on the line's own thread.
class FarEnd final : private RoomLink::Listener {
public:
    FarEnd(std::unique_ptr<RoomLinks> links, QtMailbox& near, RoomLink::Listener& listener)
        : links_(std::move(links)), near_(near), listener_(listener) {}

    void open(RoomLinks::Address address) {
        auto opened = links_->open(std::move(address), *this);
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
        near_.post([&listener = listener_, call = std::move(call)]() mutable { call(listener); });
    }

    void opened(std::vector<PendingBatch> waiting) override {
        tell([waiting = std::move(waiting)](auto& listener) mutable { listener.opened(std::move(waiting)); });
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

    std::unique_ptr<RoomLinks> links_;
    QtMailbox& near_;
    RoomLink::Listener& listener_; ///< lives at the near end
    std::unique_ptr<RoomLink> link_;
};

class ThreadedRoomLink final : public RoomLink {
public:
    ThreadedRoomLink(ThreadedRoomLinks::MakeLinks make, RoomLinks::Address address, RoomLink::Listener& listener) {
        std::promise<QtMailbox*> far;
        auto made = far.get_future();
        thread_ = std::thread{[far = std::move(far)]() mutable {
            QEventLoop loop;
            QtMailbox box;
            far.set_value(&box);
            loop.exec();
        }};
        far_ = made.get();
        far_->post([this, make = std::move(make), &listener, address = std::move(address)]() mutable {
            end_ = std::make_unique<FarEnd>(make(), near_, listener);
            end_->open(std::move(address));
        });
    }
    ThreadedRoomLink(const ThreadedRoomLink&) = delete;
    ThreadedRoomLink& operator=(const ThreadedRoomLink&) = delete;
    ~ThreadedRoomLink() override {
        // What was handed over before is done first: no act that was sent is lost, and its sender hears of it.
        far_->post([this] {
            end_.reset();
            QThread::currentThread()->exit();
        });
        thread_.join();
        near_.empty();
    }

    void send(const UUID& batchId, std::vector<Op> ops) override {
        far_->post([this, batchId, ops = std::move(ops)]() mutable { end_->send(batchId, std::move(ops)); });
    }
    void sendPresence(OwnPresence presence) override {
        onLink([presence = std::move(presence)](RoomLink& link) mutable { link.sendPresence(std::move(presence)); });
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
    void onLink(Call call) {
        far_->post([this, call = std::move(call)]() mutable {
            if (auto* const link = end_->link()) call(*link);
        });
    }

    QtMailbox near_;
    QtMailbox* far_ = nullptr;    ///< of the thread
    std::unique_ptr<FarEnd> end_; ///< made and dropped there
    std::thread thread_;
};

} // namespace

std::expected<std::unique_ptr<RoomLink>, std::string> ThreadedRoomLinks::open(Address address,
                                                                              RoomLink::Listener& listener) {
    return std::make_unique<ThreadedRoomLink>(make_, std::move(address), listener);
}

} // namespace lumaro
