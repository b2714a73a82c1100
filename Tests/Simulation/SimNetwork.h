// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/SyncClient/WebSocketTransport.h"
#include "LumaroRoom/Room/Room.h"
#include "Samples/Samples.h"
#include "Tests/Fakes/ManualSleeper.h"
#include "Tests/Simulation/Coverage.h"
#include "Tests/Simulation/Mutants.h"
#include "Tests/Simulation/Trace.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace lumaro::simulation {

/// Which side notices that a line was cut; the other one takes it for open still.
enum class Notice : std::uint8_t { both, device, server, nobody };

/// What the network is like for one device.
struct Weather {
    int fastestMs = 5;
    int slowestMs = 40;
    enum class Reach : std::uint8_t { open, refusing, silent } reach = Reach::open;
};

/// The lines between devices and their server. Each carries whole frames in order, both ways, and one is faster than
/// another; what a cut meets on its way is lost from some byte on. Outlives its connections.
class SimNetwork {
public:
    /// The server's side: hears what devices open and send.
    class Server {
    public:
        Server() = default;
        Server(const Server&) = delete;
        Server& operator=(const Server&) = delete;
        virtual ~Server() = default;

        /// A device asks for a socket: `accept` or `refuse` is the answer.
        virtual void asked(SocketId socket, const WebSocketRequest& request) = 0;
        virtual void received(SocketId socket, std::string_view frame) = 0;
        virtual void ended(SocketId socket) = 0;
    };

    SimNetwork(ManualSleeper& time, std::uint64_t seed, Sabotage sabotage, Trace& trace, Coverage& coverage)
        : time_(time), seed_(seed), sabotage_(sabotage), trace_(trace), coverage_(coverage) {}

    // The device's side

    std::unique_ptr<WebSocketConnection> open(std::size_t device, const WebSocketRequest& request,
                                              WebSocketListener& listener);

    // The server's side: nobody listens while it is null

    void listen(Server* server) { server_ = server; }
    /// False when the device does not wait for it any more.
    bool accept(SocketId socket);
    void refuse(SocketId socket, int status);
    void send(SocketId socket, SharedText text);
    void close(SocketId socket, int code);

    // Faults

    Weather& weather(std::size_t device) { return weather_[device]; }
    /// Cuts the device's lines at some byte each way.
    void cut(std::size_t device, Notice notice, samples::Random& random);
    /// The server ends, and with it its side of every line.
    void cutAll(Notice notice, samples::Random& random);
    /// The device has lost power: nothing more of what it sent leaves it.
    void abandon(std::size_t device);
    /// Lines whose end the device has not noticed.
    bool hasUnnoticedCut() const;

    /// How long a message of this device takes now.
    Seconds delay(std::size_t device);

private:
    class Connection;
    struct Opened {};
    struct Asked {
        WebSocketRequest request;
    };
    struct Gone {};
    using Carried = std::variant<Opened, Asked, SharedText, WebSocketEnd, Gone>;
    struct Item {
        ManualSleeper::Time due;
        Carried carried;
    };
    /// One way of a line.
    struct Way {
        std::deque<Item> items;
        std::unique_ptr<Sleeper::Wait> next;
        bool isCut = false;
    };
    struct Line {
        std::size_t device = 0;
        WebSocketListener* listener = nullptr; ///< null once the device has dropped the line, or knows that it ended
        bool isOpen = false;
        bool isServed = false; ///< the server has been asked, and does not know of an end
        std::size_t bytesUp = 0;
        ManualSleeper::Time heard{0}; ///< when the server last received something
        ManualSleeper::Time told{0};  ///< when the device last received something
        Way up;
        Way down;
        std::unique_ptr<Sleeper::Wait> patience;
        std::unique_ptr<Sleeper::Wait> idle;
    };

    void push(SocketId socket, Way Line::* way, Carried carried);
    static void overtake(std::deque<Item>& items);
    void arm(SocketId socket, Way Line::* way);
    void deliver(SocketId socket, Way Line::* way);
    void deliverUp(SocketId socket, Carried carried);
    void deliverDown(SocketId socket, Carried carried);
    void endForDevice(SocketId socket, WebSocketEnd end);
    void endForServer(SocketId socket);
    void watchIdle(SocketId socket, Seconds span);
    void cutLine(SocketId socket, Line& line, Notice notice, samples::Random& random);
    void dropTail(Way& way, samples::Random& random);
    void letGo(SocketId socket);
    bool sendUp(SocketId socket, std::string_view text);
    void tidy(SocketId socket);
    Line* find(SocketId socket);

    ManualSleeper& time_;
    std::uint64_t seed_;
    Sabotage sabotage_;
    Trace& trace_;
    Coverage& coverage_;
    Server* server_ = nullptr;
    std::map<std::size_t, Weather> weather_;
    std::map<SocketId, Line> lines_;
    std::uint64_t made_ = 0;
    std::uint64_t delays_ = 0;
};

} // namespace lumaro::simulation
