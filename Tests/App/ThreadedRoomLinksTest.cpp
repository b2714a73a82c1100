// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/ThreadedRoomLinks.h"

#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Platform/Qt/QtTest.h"

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

/// What the line's own thread was asked, in order. Filled there without a lock, read when the line is gone: that the
/// two do not meet is for the thread sanitizer to see.
struct FarEnd {
    std::optional<std::string> refusal; ///< why no line opens
    bool isTalkative = false;           ///< the room speaks all the time
    std::vector<UUID> sent;
    int presences = 0;
    int held = 0;
    int retries = 0;
    std::thread::id madeOn;
    std::thread::id endedOn;
};

/// A line that stores all that it is sent.
class FarLink final : public RoomLink {
public:
    FarLink(FarEnd& far, RoomLink::Listener& listener) : far_(far), listener_(listener) {
        QObject::connect(&talk_, &QTimer::timeout, &talk_, [this] { say(); });
        QTimer::singleShot(0, &talk_, [this] {
            listener_.opened({});
            if (far_.isTalkative) talk_.start(0);
        });
    }
    ~FarLink() override { far_.endedOn = std::this_thread::get_id(); }

    void send(const UUID& batchId, std::vector<Op> ops) override {
        far_.sent.push_back(batchId);
        listener_.received({ServerMessage::Ops{batchId, PartnerID::a, std::move(ops)}}, far_.sent.size());
        listener_.stored(batchId, SendOutcome::Way::queued, far_.sent.size());
    }
    void sendPresence(OwnPresence) override { ++far_.presences; }
    void holdMedia(const UUID&) override { ++far_.held; }
    void releaseMedia(const UUID&) override { --far_.held; }
    void retryNow() override { ++far_.retries; }

private:
    void say() { listener_.received({ServerMessage::Ack{words_.next()}}, 0); }

    FarEnd& far_;
    RoomLink::Listener& listener_;
    CountingUUIDs words_{1};
    QTimer talk_;
};

class FarLinks final : public RoomLinks {
public:
    explicit FarLinks(FarEnd& far) : far_(far) { far_.madeOn = std::this_thread::get_id(); }

    std::expected<std::unique_ptr<RoomLink>, std::string> open(Address, RoomLink::Listener& listener) override {
        if (far_.refusal) return std::unexpected(*far_.refusal);
        return std::make_unique<FarLink>(far_, listener);
    }

private:
    FarEnd& far_;
};

/// Hears the line on the test's thread.
class ThreadedRoomLinksTest : public QtTest, protected RoomLink::Listener {
protected:
    void open() {
        ThreadedRoomLinks links{[this] { return std::make_unique<FarLinks>(far_); }};
        auto opened = links.open({.serverURL = "", .token = {}, .deviceId = "", .heldMedia = {}}, *this);
        ASSERT_TRUE(opened);
        link_ = std::move(*opened);
    }
    /// Sends so many batches, which share one payload with this thread.
    void send(std::size_t count) {
        Upsert putUp;
        putUp.item.payload = NotePayload{};
        for (std::size_t i = 0; i < count; ++i) {
            sent_.push_back(ids_.next());
            link_->send(sent_.back(), {Op{putUp}});
        }
    }

    void opened(std::vector<PendingBatch>) override { hear("opened"); }
    void couldNotOpen(const std::string& why) override { hear(why); }
    void received(const ServerMessage& message, std::size_t) override {
        hear("received");
        if (const auto* ack = std::get_if<ServerMessage::Ack>(&message.value)) words_.push_back(ack->batchId);
        if (onReceived_) onReceived_();
    }
    void stateChanged(const ConnectionState&) override { hear("state"); }
    void stored(const UUID& batchId, SendOutcome::Way, std::size_t pending) override {
        hear("stored");
        stored_.push_back(batchId);
        EXPECT_EQ(pending, stored_.size());
    }
    void notStored(const UUID& batchId, const SendError&) override {
        hear("not stored");
        notStored_.push_back(batchId);
    }

    FarEnd far_;
    CountingUUIDs ids_{1};
    std::unique_ptr<RoomLink> link_;
    std::function<void()> onReceived_;
    std::string first_; ///< what was heard first
    std::size_t heard_ = 0;
    std::vector<UUID> sent_;
    std::vector<UUID> stored_;
    std::vector<UUID> notStored_;
    std::vector<UUID> words_; ///< of a talkative room

private:
    void hear(const std::string& what) {
        EXPECT_EQ(std::this_thread::get_id(), home_);
        if (heard_++ == 0) first_ = what;
    }

    std::thread::id home_ = std::this_thread::get_id();
};

TEST_F(ThreadedRoomLinksTest, TenThousandBatchesGoThereAndTheirAnswersComeBackInOrder) {
    open();
    send(10'000);
    link_->sendPresence({});
    link_->holdMedia(ids_.next());
    link_->retryNow();
    waitUntil([&] { return stored_.size() == sent_.size(); });
    EXPECT_EQ(stored_, sent_);
    link_.reset();
    EXPECT_EQ(far_.sent, sent_);
    EXPECT_TRUE(far_.presences == 1 && far_.held == 1 && far_.retries == 1);
    EXPECT_NE(far_.madeOn, std::this_thread::get_id());
    EXPECT_EQ(far_.endedOn, far_.madeOn);
}

TEST_F(ThreadedRoomLinksTest, WhatWasSentIsStoredAndSaidBeforeADroppedLineIsGone) {
    open();
    send(1000);
    link_.reset();
    EXPECT_EQ(far_.sent, sent_);
    EXPECT_EQ(stored_, sent_);
    const auto heard = heard_;
    settle();
    EXPECT_EQ(heard_, heard) << "a line that is gone says nothing";
}

TEST_F(ThreadedRoomLinksTest, ALineMayBeDroppedAtAnyMomentWhileTheRoomSpeaks) {
    far_.isTalkative = true;
    for (std::size_t words = 0; words < 40; ++words) {
        words_.clear();
        open();
        waitUntil([&] { return words_.size() >= words; });
        link_.reset();
        const auto heard = heard_;
        settle();
        EXPECT_EQ(heard_, heard);
        CountingUUIDs expected{1};
        for (const auto& word : words_) EXPECT_EQ(word, expected.next()) << "nothing is left out";
    }
}

TEST_F(ThreadedRoomLinksTest, ALineMayBeDroppedFromWithinACallToItsListener) {
    onReceived_ = [&] { link_.reset(); };
    open();
    send(500);
    waitUntil([&] { return !link_; });
    EXPECT_EQ(stored_, sent_) << "the rest was said before it was gone";
    const auto heard = heard_;
    settle();
    EXPECT_EQ(heard_, heard);
}

TEST_F(ThreadedRoomLinksTest, ALineThatDoesNotOpenSaysSoFirstAndStoresNothing) {
    far_.refusal = "read-only";
    open();
    send(3);
    link_->sendPresence({});
    link_->retryNow();
    waitUntil([&] { return notStored_.size() == sent_.size(); });
    EXPECT_EQ(first_, "read-only");
    EXPECT_EQ(notStored_, sent_);
    EXPECT_TRUE(stored_.empty());
    link_.reset();
}

} // namespace
} // namespace lumaro
