// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/ApplyVerb.h"

#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardModel/BoardJson.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/JsonCodec.h"

#include <istream>
#include <map>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

struct ApplyRequest {
    Board board;
    std::optional<std::map<UUID, Instant>> tombstones;
    std::vector<ForwardCompatibleOp> ops;

    static constexpr auto fields() {
        return std::tuple{Field{"board", &ApplyRequest::board}, Field{"tombstones", &ApplyRequest::tombstones},
                          Field{"ops", &ApplyRequest::ops}};
    }
};

struct Rejection {
    std::int64_t index = 0;
    RejectionReason reason = RejectionReason::stale;

    static constexpr auto fields() {
        return std::tuple{Field{"index", &Rejection::index}, Field{"reason", &Rejection::reason}};
    }
};

struct ApplyAnswer {
    Board board;
    std::map<UUID, Instant> tombstones;
    std::vector<Op> applied;
    std::vector<Rejection> rejected;

    static constexpr auto fields() {
        return std::tuple{Field{"board", &ApplyAnswer::board}, Field{"tombstones", &ApplyAnswer::tombstones},
                          Field{"applied", &ApplyAnswer::applied}, Field{"rejected", &ApplyAnswer::rejected}};
    }
};

struct ErrorAnswer {
    std::string error;
    std::string path;

    static constexpr auto fields() {
        return std::tuple{Field{"error", &ErrorAnswer::error}, Field{"path", &ErrorAnswer::path}};
    }
};

// What was read can be written: its numbers are finite, its strings are UTF-8 and it is no deeper in the answer.
template <class T>
std::string written(const T& value) {
    auto text = Wire::encode(value);
    if (!text) fatal("a value that was read cannot be written");
    return std::move(*text);
}

} // namespace

std::expected<std::string, DecodeError> applyRequest(std::string_view request, Instant now) {
    auto read = Wire::decode<ApplyRequest>(request);
    if (!read) return std::unexpected(std::move(read.error()));
    if (read->tombstones) read->board.tombstones = std::move(*read->tombstones);
    auto result = BoardLogic::apply(understood(std::move(read->ops)), std::move(read->board), now);
    ApplyAnswer answer;
    answer.tombstones = std::exchange(result.board.tombstones, {});
    answer.board = std::move(result.board);
    answer.applied = std::move(result.applied);
    for (const auto& rejected : result.rejected) answer.rejected.push_back({rejected.index, rejected.reason});
    return written(answer);
}

bool applyLines(std::istream& in, std::ostream& out, Instant now) {
    bool allRead = true;
    for (std::string line; std::getline(in, line);) {
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        auto answer = applyRequest(line, now);
        allRead = allRead && answer.has_value();
        // Whoever waits for a line gets it at once.
        out << (answer ? *answer : written(ErrorAnswer{answer.error().message, answer.error().path})) << '\n'
            << std::flush;
    }
    return allRead;
}

} // namespace lumaro
