// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/Messages.h"
#include "LumaroRoom/Pairing/Secrets.h"
#include "LumaroRoom/Server/BeastHttp.h"
#include "LumaroRoom/Server/CompletionOf.h"
#include "LumaroRoom/Server/CorkedStream.h"
#include "LumaroRoom/Server/TokenBucket.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/write.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <exception>
#include <optional>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

namespace websocket = boost::beast::websocket;

// An idle socket gives back what a large frame took.
constexpr std::size_t keptBufferBytes = 4096;
constexpr std::size_t keptQueueLength = 64;

constexpr bool deflates = false;

template <class Next>
class BeastRoomSocket final : public RoomSocket,
                              public Connection,
                              public std::enable_shared_from_this<BeastRoomSocket<Next>> {
public:
    template <class... Stream>
    BeastRoomSocket(Shard& shard, const UpgradeRequest& upgrade, Stream&&... stream)
        : Connection(shard), ws_(std::forward<Stream>(stream)...), coupleId_(upgrade.coupleId),
          token_(sha256(upgrade.token)), room_(shard.shardOf(coupleId_)), id_(shard.nextSocketId()),
          pace_(shard.limits().messagesPerSecond, shard.limits().messageBurst, SteadyClock::now()) {
        deadline_ = SteadyClock::now() + shard.limits().requestTime;
    }

    static Awaitable<void> open(std::shared_ptr<BeastRoomSocket> self, UpgradeRequest upgrade);

    void send(std::shared_ptr<const std::string> text) override;
    void close(int code, std::string_view reason) override;
    void pause() override { isPaused_ = true; }
    void resume() override;
    void look(SteadyClock::time_point now) override;
    void drain() override;

private:
    // The room hears that the socket is gone also when reading ends with an exception: the coroutine's own, or that of
    // an operation it waits for, which takes the coroutine with it. Not when the event loop goes, and the rooms with
    // it.
    struct LeavesOnFailure {
        explicit LeavesOnFailure(BeastRoomSocket& reader) : socket(reader) {}
        LeavesOnFailure(const LeavesOnFailure&) = delete;
        LeavesOnFailure& operator=(const LeavesOnFailure&) = delete;
        ~LeavesOnFailure() {
            if (std::uncaught_exceptions() == 0) return;
            socket.leaveRoom();
            socket.cut();
        }
        BeastRoomSocket& socket;
    };

    Awaitable<bool> isAdmitted(const UpgradeRequest& upgrade);
    Awaitable<bool> refuse(const BeastRequest& request, ServerResponse response);
    static Awaitable<void> readFrames(std::shared_ptr<BeastRoomSocket> self);
    Awaitable<void> waitWhilePaused();
    void enterRoom();
    void leaveRoom();
    void takeFrame(Pace pace);
    void pump();
    void wrote(error_code error);
    void startClosing();
    void cut();
    bool isOver() const { return isCut_ || closing_.has_value(); }
    void note(std::string_view what) const;

    websocket::stream<CorkedStream<Next>, deflates> ws_;
    beast::flat_buffer buffer_;
    std::string coupleId_;
    TokenHash token_;
    Shard& room_; ///< where the couple's room is
    SocketId id_;
    std::optional<SocketQuota::Place> place_;
    TokenBucket pace_;
    std::unique_ptr<SteadyTimer> wait_; ///< while the next frame is put off
    SteadyClock::time_point deadline_;  ///< for the peer to say something
    std::vector<std::shared_ptr<const std::string>> queue_;
    std::size_t nextInQueue_ = 0;
    std::size_t waitingBytes_ = 0;
    std::optional<websocket::close_reason> closing_;
    bool isOpen_ = false;
    bool isWriting_ = false;
    bool isPaused_ = false;
    bool isSayingGoodbye_ = false;
    bool isCut_ = false;
};

template <class Next>
Awaitable<void> BeastRoomSocket<Next>::open(std::shared_ptr<BeastRoomSocket> self, UpgradeRequest upgrade) {
    if (!co_await self->isAdmitted(upgrade)) {
        ++self->shard().figures().refusedUpgrades;
        co_return;
    }
    auto& ws = self->ws_;
    ws.set_option(
        websocket::stream_base::timeout{websocket::stream_base::none(), websocket::stream_base::none(), false});
    ws.auto_fragment(false);
    ws.read_message_max(self->shard().limits().maxFrameBytes);
    ws.text(true);
    const auto [error] = co_await ws.async_accept(upgrade.request, asTuple);
    if (error || self->isCut_) co_return;
    self->enterRoom();
    // A coroutine of its own: this one and the request need not stay as long as the socket.
    asio::co_spawn(self->shard().executor(), readFrames(self), self->shard().noteEnd());
}

template <class Next>
Awaitable<bool> BeastRoomSocket<Next>::isAdmitted(const UpgradeRequest& upgrade) {
    const auto opens = co_await completionOf<StoreResult<bool>>(
        shard().executor(), [&](auto then) { shard().authorize(coupleId_, token_, std::move(then)); });
    if (!opens) {
        co_return co_await refuse(upgrade.request,
                                  errorResponse(503, "unavailable", "the board's store does not answer"));
    }
    if (!*opens) co_return co_await refuse(upgrade.request, unauthorizedResponse());
    place_ = shard().shared().quota.take(upgrade.client.origin());
    if (!place_) {
        co_return co_await refuse(upgrade.request,
                                  errorResponse(429, "limit_exceeded", "this address has as many sockets as it may"));
    }
    co_return true;
}

template <class Next>
Awaitable<bool> BeastRoomSocket<Next>::refuse(const BeastRequest& request, ServerResponse response) {
    ++shard().figures().answers[static_cast<std::size_t>(response.status / 100)];
    const auto written = beastResponse(std::move(response), request.version(), false, shard().shared().clock.now());
    co_await http::async_write(ws_.next_layer().next_layer(), written, asTuple);
    error_code ignored;
    beast::get_lowest_layer(ws_).shutdown(Tcp::socket::shutdown_send, ignored);
    co_return false;
}

template <class Next>
void BeastRoomSocket<Next>::enterRoom() {
    ++shard().figures().upgrades;
    isOpen_ = true;
    deadline_ = SteadyClock::now() + shard().limits().socketSilence;
    note("socket opened");
    room_.dispatch([room = &room_, home = &shard(), id = id_, socket = this->weak_from_this(), coupleId = coupleId_,
                    token = token_] { room->joined(id, *home, socket, coupleId, token); });
    if (shard().isDraining()) drain();
}

template <class Next>
void BeastRoomSocket<Next>::leaveRoom() {
    note("socket closed");
    room_.dispatch([room = &room_, id = id_] { room->left(id); });
}

template <class Next>
Awaitable<void> BeastRoomSocket<Next>::readFrames(std::shared_ptr<BeastRoomSocket> self) {
    auto& limits = self->shard().limits();
    const LeavesOnFailure leaves{*self};
    while (!self->isOver()) {
        const auto [error, size] = co_await self->ws_.async_read(self->buffer_, asTuple);
        if (error || self->isOver()) break;
        const auto now = SteadyClock::now();
        self->deadline_ = now + limits.socketSilence;
        const auto wait = self->pace_.take(now);
        self->takeFrame(wait > wait.zero() ? Pace::over : Pace::within);
        if (wait > wait.zero()) {
            // What is not read makes the peer's own socket push back.
            ++self->shard().figures().delayed;
            self->wait_ = std::make_unique<SteadyTimer>(self->shard().context(), wait);
            co_await self->wait_->async_wait(asTuple);
            self->wait_.reset();
        }
        if (self->isPaused_) co_await self->waitWhilePaused();
    }
    self->leaveRoom();
    if (!self->closing_) self->cut();
}

template <class Next>
Awaitable<void> BeastRoomSocket<Next>::waitWhilePaused() {
    while (isPaused_ && !isOver()) {
        wait_ = std::make_unique<SteadyTimer>(shard().context(), SteadyClock::time_point::max());
        co_await wait_->async_wait(asTuple);
    }
    wait_.reset();
    deadline_ = SteadyClock::now() + shard().limits().socketSilence;
}

template <class Next>
void BeastRoomSocket<Next>::resume() {
    isPaused_ = false;
    if (wait_ && wait_->expiry() == SteadyClock::time_point::max()) wait_->cancel();
}

template <class Next>
void BeastRoomSocket<Next>::takeFrame(Pace pace) {
    ++shard().figures().frames;
    if (!ws_.got_text()) return close(websocket::close_code::unknown_data, "frames are text");
    const auto bytes = buffer_.cdata();
    const std::string_view frame{static_cast<const char*>(bytes.data()), bytes.size()};
    if (&room_ == &shard()) {
        room_.received(id_, frame, pace);
    } else {
        room_.dispatch([room = &room_, id = id_, copy = std::string{frame}, pace] { room->received(id, copy, pace); });
    }
    buffer_.consume(buffer_.size());
    if (buffer_.capacity() > keptBufferBytes) buffer_.shrink_to_fit();
}

template <class Next>
void BeastRoomSocket<Next>::send(std::shared_ptr<const std::string> text) {
    if (isOver()) return;
    waitingBytes_ += text->size();
    if (waitingBytes_ > shard().limits().maxWaitingBytes) {
        ++shard().figures().slowReaders;
        note("socket cut off, it reads too slowly");
        return cut();
    }
    queue_.push_back(std::move(text));
    pump();
}

template <class Next>
void BeastRoomSocket<Next>::close(int code, std::string_view reason) {
    if (isOver()) return;
    closing_.emplace(static_cast<websocket::close_code>(code), beast::string_view{reason.data(), reason.size()});
    deadline_ = SteadyClock::now() + shard().limits().closingTime;
    if (wait_) wait_->cancel();
    pump();
}

// One frame is under way at a time; behind the last one goes the goodbye.
template <class Next>
void BeastRoomSocket<Next>::pump() {
    if (isWriting_ || isCut_) return;
    if (nextInQueue_ == queue_.size()) {
        queue_.clear();
        nextInQueue_ = 0;
        if (queue_.capacity() > keptQueueLength) queue_.shrink_to_fit();
        if (closing_) startClosing();
        return;
    }
    isWriting_ = true;
    ws_.async_write(asio::buffer(*queue_[nextInQueue_]),
                    [self = this->shared_from_this()](error_code error, std::size_t) { self->wrote(error); });
}

template <class Next>
void BeastRoomSocket<Next>::wrote(error_code error) {
    isWriting_ = false;
    if (error) return cut();
    waitingBytes_ -= queue_[nextInQueue_]->size();
    queue_[nextInQueue_++].reset();
    pump();
}

template <class Next>
void BeastRoomSocket<Next>::startClosing() {
    if (std::exchange(isSayingGoodbye_, true)) return;
    ws_.async_close(*closing_, [self = this->shared_from_this()](error_code) { self->cut(); });
}

template <class Next>
void BeastRoomSocket<Next>::look(SteadyClock::time_point now) {
    if (now <= deadline_) return;
    if (!isOpen_ || isOver()) return cut();
    if (isPaused_) return; // it is we who do not listen
    ++shard().figures().silent;
    note("socket closed, it says nothing");
    close(websocket::close_code::going_away, "silent for too long");
}

template <class Next>
void BeastRoomSocket<Next>::drain() {
    if (isOpen_) return close(websocket::close_code::going_away, "the room is going down");
    cut();
}

// At once: whatever waits on the socket ends with an error.
template <class Next>
void BeastRoomSocket<Next>::cut() {
    isCut_ = true;
    if (wait_) wait_->cancel();
    error_code ignored;
    beast::get_lowest_layer(ws_).close(ignored);
}

// A couple's id stands in URLs: the log has enough of it to tell couples apart.
template <class Next>
void BeastRoomSocket<Next>::note(std::string_view what) const {
    constexpr std::size_t shown = 4;
    std::string line{what};
    line.append(" couple=").append(coupleId_, 0, shown);
    shard().shared().log.write(LogLevel::debug, "socket", line);
}

template <class Next, class... Stream>
void start(Shard& shard, UpgradeRequest upgrade, Stream&&... stream) {
    using Kind = BeastRoomSocket<Next>;
    auto socket = std::make_shared<Kind>(shard, upgrade, std::forward<Stream>(stream)...);
    asio::co_spawn(shard.executor(), Kind::open(std::move(socket), std::move(upgrade)), shard.noteEnd());
}

} // namespace

void openRoomSocket(Shard& shard, TcpSocket stream, UpgradeRequest upgrade) {
    start<TcpSocket>(shard, std::move(upgrade), std::move(stream));
}

void openRoomSocket(Shard& shard, std::unique_ptr<TlsSocket> stream, UpgradeRequest upgrade) {
    start<TlsSocket>(shard, std::move(upgrade), std::move(*stream));
}

} // namespace lumaro
