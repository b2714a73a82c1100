// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtLoop.h"

#include "Platform/Qt/SelfPipe.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <array>
#include <csignal>
#include <optional>
#include <utility>

namespace lumaro {
namespace {

// Of the loop that hears of signals; a handler may do little more than ring it.
int bell = -1;

void heard(int /*signal*/) {
    SelfPipe::ring(bell);
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
    std::optional<SelfPipe> signals;
};

QtLoop::QtLoop() : state_(std::make_unique<State>()) {
    if (QCoreApplication::instance() == nullptr)
        state_->application.emplace(state_->argumentCount, state_->arguments.data());
    state_->loop.emplace();
}

QtLoop::~QtLoop() {
    if (!state_->signals) return;
    static_cast<void>(std::signal(SIGINT, SIG_DFL));
    static_cast<void>(std::signal(SIGTERM, SIG_DFL));
    bell = -1;
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
    state_->signals.emplace([then = std::move(then), isTold = false]() mutable {
        if (!std::exchange(isTold, true)) then();
    });
    bell = state_->signals->bell();
    struct sigaction action{};
    action.sa_handler = heard;
    // The next one finds the default again: it ends a program that hangs.
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
}

} // namespace lumaro
