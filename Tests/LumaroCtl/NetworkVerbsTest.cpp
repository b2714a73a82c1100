// SPDX-License-Identifier: Apache-2.0
// The verbs with a network, without one: their arguments, their files, and how they hand over to the process that has
// the profile.
#include "LumaroCtl/NetworkVerbs.h"
#include "LumaroControl/Moments.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroCtl/CommandLine.h"
#include "Tests/Platform/Qt/QtTest.h"
#include "Tests/Support/ScratchFolder.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

namespace lumaro {
namespace {

struct Result {
    int status = 0;
    std::string out;
    std::string err;
};

std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream stream{line};
    return {std::istream_iterator<std::string>{stream}, {}};
}

class NetworkVerbs : public QtTest {
protected:
    NetworkVerbs() { options_.profile = profile(); }

    std::string profile() const { return folder_.file("profile"); }
    Result run(std::vector<std::string> words) const {
        words.insert(words.begin(), {"lumaroctl", "--profile", profile()});
        std::vector<char*> pointers(words.size());
        std::ranges::transform(words, pointers.begin(), [](auto& word) { return word.data(); });
        std::istringstream in;
        std::ostringstream out;
        std::ostringstream err;
        const int status = runCommandLine(pointers, in, out, err);
        return {status, out.str(), err.str()};
    }
    void pairOn(const std::string& server) {
        Network network{options_};
        auto fresh = network.openProfile().value();
        EXPECT_TRUE(fresh.createFolder() && fresh.nameDevice() &&
                    fresh.pair(CoupleToken::parse("lm1.abc.b.hush7").value(), server, "Bo"));
    }
    // A profile on the board of a server that is not there.
    void pair() { pairOn("http://" + RawServer{saying("")}.address()); }
    Board shown() const { return Wire::decode<Board>(run({"show", "--json", "--wait", "0"}).out).value_or(Board{}); }

    ScratchFolder folder_;
    NetworkOptions options_;
};

const std::string queued = "queued: it goes out when the room is reachable\n";

TEST_F(NetworkVerbs, RefuseACommandLineThatMakesNoSense) {
    pair();
    for (const char* line :
         {"start", "join 12345 --name Bo", "join 123456 --name B --as c", "put note", "put note a b",
          "put note a --at 1", "put countdown x --to 2026-02-30", "put pomodoro --minutes 181", "move a --to 1,2,3",
          "turn a --to left", "background red", "pending --json", "show --wait -1", "show --server board.example"}) {
        const auto result = run(wordsOf(line));
        EXPECT_EQ(result.status, 64) << line;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
}

TEST_F(NetworkVerbs, SayWhereAProfileIsOnNoBoardAndMakeNoFiles) {
    for (const char* verb : {"show", "watch", "code", "link", "leave", "status"}) {
        const auto result = run({verb});
        EXPECT_EQ(result.status, 77) << result.err;
        EXPECT_NE(result.err.find("on no board yet"), std::string::npos) << result.err;
    }
    EXPECT_FALSE(std::filesystem::exists(profile()));
}

TEST_F(NetworkVerbs, UseTheServicesOwnWordsWhereItDoesNotAnswer) {
    const auto gone = "http://" + RawServer{saying("")}.address();
    const std::string words = ": couldn't reach the board. it'll work once you're online.\n";
    EXPECT_EQ(run({"start", "--name", "Bo", "--server", gone}).err, "lumaroctl start" + words);
    EXPECT_EQ(run({"join", gone + "/for/abcdefghijklmnop", "--name", "Bo"}).err, "lumaroctl join" + words);
    pair();
    for (const char* verb : {"code", "link", "leave"}) EXPECT_EQ(run({verb}).status, 69) << verb;
    EXPECT_EQ(run({"start", "--name", "Bo"}).status, 77) << "it is on a board";
}

/// A board's server, as far as people who come and go see it.
struct PairingServer {
    explicit PairingServer(std::string coupleId) : id(std::move(coupleId)) {}

    std::string url() const { return "http://" + server.address(); }
    std::string link() const { return url() + "/for/abcdefghijklmnop"; }

    std::string id;
    bool takesPeople = true;
    std::vector<std::string> asked; ///< method and path
    RawServer server{[this](QTcpSocket& socket, const std::string& head) {
        asked.push_back(head.substr(0, head.find(" HTTP/")));
        const bool isJoin = head.starts_with("POST /joins");
        const auto joined = R"({"token":"lm1.)" + id + R"(.a.hush8","coupleId":")" + id +
                            R"(","partnerName":"Ann","slot":"a","status":"joined"})";
        const auto refused = std::string{R"({"code":"invite_not_found","message":""})"};
        const auto body = !isJoin ? "{}" : takesPeople ? joined : refused;
        saying(std::string{isJoin && !takesPeople ? "HTTP/1.1 404 No" : "HTTP/1.1 200 OK"} + "\r\nContent-Length: " +
               std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body)(socket, head);
    }};
};

TEST_F(NetworkVerbs, LeaveABoardForAnotherOnlyWhenToldAndLastOfAll) {
    PairingServer old{"abc"};
    PairingServer fresh{"xyz"};
    pairOn(old.url());
    const auto coupleNow = [this] { return Network{options_}.openProfile()->token()->coupleId; };
    const auto refused = run({"join", fresh.link(), "--name", "Bo"});
    EXPECT_EQ(refused.status, 77);
    EXPECT_NE(refused.err.find("--leave"), std::string::npos) << refused.err;
    EXPECT_TRUE(old.asked.empty() && fresh.asked.empty());

    fresh.takesPeople = false;
    EXPECT_EQ(run({"join", fresh.link(), "--name", "Bo", "--leave"}).status, 77);
    EXPECT_EQ(coupleNow(), "abc");
    EXPECT_EQ(old.asked, (std::vector<std::string>{"GET /couples/abc/snapshot"}));

    fresh.takesPeople = true;
    const auto joined = run({"join", fresh.link(), "--name", "Bo", "--leave"});
    EXPECT_EQ(joined.status, 0) << joined.err;
    EXPECT_EQ(coupleNow(), "xyz");
    EXPECT_EQ(Network{options_}.openProfile()->facts().server, fresh.url());
    EXPECT_EQ(old.asked.back(), "DELETE /couples/abc/devices/self");
}

TEST_F(NetworkVerbs, StayWhereTheBoardCannotBeLeft) {
    PairingServer fresh{"xyz"};
    pair();
    const auto result = run({"join", fresh.link(), "--name", "Bo", "--leave"});
    EXPECT_EQ(result.status, 69);
    EXPECT_NE(result.err.find("nothing was changed"), std::string::npos) << result.err;
    EXPECT_TRUE(fresh.asked.empty());
}

TEST_F(NetworkVerbs, KeepEditsForLaterWhereTheRoomIsOutOfReach) {
    pair();
    const auto note = run({"put", "note", "buy oranges", "--keep", "--paper", "sky", "--at", "10,20"});
    EXPECT_EQ(note.err, queued);
    for (const char* line : {"put note x --paper velvet", "put note x --pin nail"})
        EXPECT_EQ(run(wordsOf(line)).status, 64) << line;
    for (const char* line : {"put countdown Lisbon --to 2026-06-01Z", "put pomodoro --minutes 50 --start",
                             "put location", "background lilac"}) {
        EXPECT_EQ(run(wordsOf(line)).err, queued) << line;
    }
    const auto board = shown();
    ASSERT_EQ(board.items.size(), 4U);
    EXPECT_EQ(board.background, BackgroundID::lilac);
    EXPECT_EQ(board.items[0].center, (Point{10, 20}));
    const NotePayload kept{pm::docOfLines("buy oranges"), "sky", "brass", std::nullopt};
    EXPECT_EQ(board.items[0].payload, Payload{kept});
    EXPECT_EQ(board.items[1].payload.as<CountdownPayload>()->targetDate, parseMoment("2026-06-01Z"));
    EXPECT_EQ(board.items[2].payload.as<PomodoroPayload>()->startedBy, PartnerID::b);
    EXPECT_EQ(board.items[3].payload, Payload{LocationPayload{PartnerID::b}});
    ASSERT_EQ(run({"export", folder_.file("copy")}).status, 0);
    std::ifstream text{folder_.file("copy/notes/" + board.items[0].id.lowerString() + ".txt")};
    EXPECT_EQ((std::string{std::istreambuf_iterator<char>{text}, {}}), "buy oranges\n");
}

TEST_F(NetworkVerbs, HandTheirActToTheProcessThatHasTheProfile) {
    pair();
    Network network{options_};
    const auto opened = network.openPairedProfile().value();
    auto owner = ProfileOwner::take(opened, network.takeLock(opened).value(), opened.facts().server, network.ports());
    ASSERT_TRUE(owner) << owner.error().message;
    const auto note = run({"put", "note", "through another door"});
    EXPECT_EQ(note.err, queued);
    const auto& board = (*owner)->session().board().shown();
    ASSERT_EQ(board.items.size(), 1U) << "the owner shows it";
    EXPECT_EQ((*owner)->session().client().pendingCount(), 1U);
    EXPECT_EQ(run({"move", note.out.substr(0, 6), "--to", "1,2"}).status, 0);
    EXPECT_EQ(board.items[0].center, (Point{1, 2}));
    EXPECT_EQ(run({"move", "nothing", "--to", "1,2"}).err, "lumaroctl move: no item begins with \"nothing\"\n");
    EXPECT_EQ(run({"show", "--json"}).out, Wire::encode(board).value() + "\n");
    for (const char* line : {"watch --wait 0", "leave --wait 0", "join 123456 --name x --wait 0"}) {
        EXPECT_EQ(run(wordsOf(line)).status, 75) << line;
    }
    owner->reset();
    EXPECT_EQ(shown().items.size(), 1U) << "what waits is found again";
}

TEST_F(NetworkVerbs, ServeOthersInTurnAtOneProfile) {
    pair();
    std::vector<std::jthread> others;
    std::atomic<int> failed = 0;
    const std::string program = LUMAROCTL_PROGRAM;
    for (int i = 0; i < 8; ++i) {
        others.emplace_back([&, i] {
            const auto command = program + " --profile " + profile() + " put note " + std::to_string(i) + " >" +
                                 folder_.file("out") + " 2>&1";
            if (std::system(command.c_str()) != 0) ++failed;
        });
    }
    others.clear();
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(shown().items.size(), 8U);
}

} // namespace
} // namespace lumaro
