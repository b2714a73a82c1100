// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/Leaving.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <utility>

namespace lumaro {

// A line for each board: the server, a space, the token.

void Leaving::tellWhatIsKept(const std::optional<CoupleToken>& own) {
    if (std::exchange(isRead_, true)) return;
    readTask_ = inBackground(
        ports_.background, [keychain = membership_.keychain()] { return keychain.read(KeychainAccount::leaving); },
        [this, own](const ReadResult& read) {
            const auto* const found = std::get_if<ReadResult::Found>(&read.value);
            if (found == nullptr) return;
            bool isStale = isWritten_;
            std::istringstream lines{found->data};
            for (std::string line; std::getline(lines, line);) {
                const auto space = std::min(line.find(' '), line.size());
                auto token = CoupleToken::parse(line.substr(space));
                if (token && own == *token) {
                    isStale = true;
                } else if (token && !find(*token)) {
                    ask(add(line.substr(0, space), std::move(*token)));
                }
            }
            if (isStale) keep();
        });
}

void Leaving::tell(const CoupleToken& token, const std::string& serverURL) {
    auto* const known = find(token);
    auto& board = known != nullptr ? *known : add(serverURL, token);
    board.isIntended = false;
    if (!board.call) ask(board);
    keep();
}

void Leaving::intend(const CoupleToken& token, const std::string& serverURL) {
    if (find(token) != nullptr) return;
    add(serverURL, token).isIntended = true;
    keep();
}

void Leaving::callOff(const CoupleToken& token) {
    std::erase_if(boards_, [&](const Board& board) { return board.isIntended && board.token == token; });
    keep();
}

void Leaving::retryNow() {
    for (auto& board : boards_) {
        if (!board.call && !board.isIntended) ask(board);
    }
}

Leaving::Board* Leaving::find(const CoupleToken& token) {
    const auto board = std::ranges::find(boards_, token, &Board::token);
    return board == boards_.end() ? nullptr : &*board;
}

Leaving::Board& Leaving::add(std::string serverURL, CoupleToken token) {
    if (boards_.size() == maxBoards) boards_.erase(boards_.begin());
    return boards_.emplace_back(std::move(serverURL), std::move(token), nullptr);
}

void Leaving::ask(Board& board) {
    board.call = service_.client(board.serverURL)
                     .leave(board.token, [this, token = board.token](std::expected<void, PairingFailure> left) {
                         answered(token, left);
                     });
}

void Leaving::answered(const CoupleToken& token, const std::expected<void, PairingFailure>& left) {
    if (!left) log(LogLevel::error, "the service did not hear of it: " + std::string{left.error().text()});
    const auto board = std::ranges::find(boards_, token, &Board::token);
    if (board == boards_.end()) return;
    // A service that knows the device no longer has nothing left to hear.
    const bool isDone = left || (left.error().status >= 400 && left.error().status < 500 && left.error().status != 429);
    if (!isDone) {
        board->call = nullptr;
        return;
    }
    boards_.erase(board);
    keep();
}

void Leaving::keep() {
    std::string lines;
    for (const auto& board : boards_) lines += board.serverURL + " " + board.token.raw + "\n";
    isWritten_ = true;
    keepTask_ = inBackground(
        ports_.background,
        [keychain = membership_.keychain(), lines = std::move(lines)]() mutable {
            return lines.empty() ? keychain.remove(KeychainAccount::leaving)
                                 : keychain.save(lines, KeychainAccount::leaving);
        },
        [this](KeychainStore::Result<void> kept) {
            if (kept) return;
            log(LogLevel::error, "what the service is to hear could not be kept (OSStatus " +
                                     std::to_string(static_cast<std::int32_t>(kept.error())) + ")");
        });
}

} // namespace lumaro
