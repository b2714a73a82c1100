// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtLoop.h"

#include "LumaroCore/Support/Fatal.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <utility>

namespace lumaro {
namespace {

// The end of a pipe that the signal handler writes to; a handler may do little more.
int wakeUp = -1;

void heard(int /*signal*/) {
    const int before = errno;
    static_cast<void>(::write(wakeUp, "!", 1) < 0);
    errno = before;
}

} // namespace

struct QtLoop::State {
    // A program has one of them; a test may have made it before.
    int argumentCount = 1;
    std::array<char, 7> name{"lumaro"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    std::optional<QCoreApplication> application;
    std::optional<QEventLoop> loop;
    bool isDone = false;
    std::array<int, 2> pipe{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier;
};

QtLoop::QtLoop() : state_(std::make_unique<State>()) {
    if (QCoreApplication::instance() == nullptr)
        state_->application.emplace(state_->argumentCount, state_->arguments.data());
    state_->loop.emplace();
}

QtLoop::~QtLoop() {
    if (!state_->notifier) return;
    static_cast<void>(std::signal(SIGINT, SIG_DFL));
    static_cast<void>(std::signal(SIGTERM, SIG_DFL));
    wakeUp = -1;
    for (const int end : state_->pipe) ::close(end);
}

void QtLoop::run() {
    if (!state_->isDone) state_->loop->exec();
    state_->isDone = false;
}

void QtLoop::quit() {
    state_->isDone = true;
    state_->loop->quit();
}

void QtLoop::onTermination(std::function<void()> then) {
    if (::pipe2(state_->pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) fatal("the system gives no pipe");
    wakeUp = state_->pipe[1];
    state_->notifier = std::make_unique<QSocketNotifier>(state_->pipe[0], QSocketNotifier::Read);
    QObject::connect(state_->notifier.get(), &QSocketNotifier::activated, state_->notifier.get(),
                     [this, then = std::move(then)] {
                         state_->notifier->setEnabled(false);
                         then();
                     });
    struct sigaction action{};
    action.sa_handler = heard;
    // The next one finds the default again: it ends a program that hangs.
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
}

} // namespace lumaro
