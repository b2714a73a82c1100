// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/LocalSocket.h"

#include "Platform/Posix/FolderLock.h"
#include "Tests/Platform/Qt/QtTest.h"
#include "Tests/Support/ScratchFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace lumaro {
namespace {

class LocalSocketTest : public QtTest {
protected:
    std::string path() const { return folder_.file("socket"); }
    auto listen(LocalSocketServer::Handler handler) {
        return LocalSocketServer::listen(path(), std::move(handler)).value();
    }
    std::string ask(const std::string& line, Seconds timeout = Seconds{20}) {
        std::string answer;
        const LocalSocketCall call{path(), line, timeout, [&](LocalSocketCall::Answer got) {
                                       using Fault = LocalSocketCall::Fault;
                                       answer = got ? *got : got.error() == Fault::cut ? "cut" : "unreachable";
                                   }};
        EXPECT_EQ(answer, "");
        waitUntil([&] { return !answer.empty(); });
        return answer;
    }

    ScratchFolder folder_;
};

TEST_F(LocalSocketTest, AnswersLinesOfAnySizeToTheOwnerAlone) {
    const auto server = listen([](const std::string& line, LocalSocketServer::Reply reply) { reply("got " + line); });
    struct stat status{};
    ASSERT_EQ(stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    for (const std::string& line : {std::string{"x"}, std::string{"{\"a\":1}"}, std::string(3000000, 'y')}) {
        EXPECT_EQ(ask(line), "got " + line);
    }
    EXPECT_EQ(ask(std::string(LocalSocketServer::maxLineBytes + 100000, 'z')), "cut");
}

TEST_F(LocalSocketTest, TellsACallThatNobodyHeardFromOneThatWasCut) {
    EXPECT_EQ(ask("x"), "unreachable");
    std::vector<LocalSocketServer::Reply> kept;
    std::unique_ptr<LocalSocketServer> server;
    server = listen([&](const std::string&, LocalSocketServer::Reply reply) {
        kept.push_back(std::move(reply));
        if (kept.size() == 2) QTimer::singleShot(0, [&] { server.reset(); });
    });
    EXPECT_EQ(ask("x", Seconds{0.05}), "cut");
    settle();
    kept.front()("too late");
    EXPECT_EQ(ask("x"), "cut");
    EXPECT_EQ(ask("x"), "unreachable");
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(LocalSocketTest, TakesThePlaceOfASocketThatWasLeftBehind) {
    {
        std::ignore = std::ofstream{path()};
    }
    const auto server = listen([](const std::string&, LocalSocketServer::Reply reply) { reply("here"); });
    EXPECT_EQ(ask("x"), "here");
    EXPECT_FALSE(LocalSocketServer::listen(std::string(300, 'x'), {}));
}

TEST_F(LocalSocketTest, AFolderHasOneOwnerWhoIsKnown) {
    const auto lockPath = folder_.file("lock");
    {
        auto lock = FolderLock::take(lockPath);
        ASSERT_TRUE(lock);
        const auto moved = std::move(*lock);
        const auto second = FolderLock::take(lockPath);
        ASSERT_FALSE(second);
        EXPECT_EQ(std::get<FolderLock::Held>(second.error()).process, getpid());
    }
    EXPECT_TRUE(FolderLock::take(lockPath));
    const auto nowhere = FolderLock::take(folder_.file("none/lock"));
    EXPECT_EQ(std::get<FileError>(nowhere.error()).fault, FileFault::notFound);
}

} // namespace
} // namespace lumaro
