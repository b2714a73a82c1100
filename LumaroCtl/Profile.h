// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroControl/ExitStatus.h"
#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/JsonError.h"
#include "LumaroCore/Support/UUIDSource.h"

#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// The board that a profile is about to be on.
struct NextBoard {
    std::string coupleId;
    std::string server;
    std::string name;

    static constexpr auto fields() {
        return std::tuple{Field{"coupleId", &NextBoard::coupleId}, Field{"server", &NextBoard::server},
                          Field{"name", &NextBoard::name}};
    }
    bool operator==(const NextBoard&) const = default;
};

/// What a profile knows of its device and of the person who uses it.
struct ProfileFacts {
    std::string deviceId; ///< made once
    std::string server;
    std::string name;
    /// Counts once the token is this board's: two files cannot be replaced in one step.
    std::optional<NextBoard> next{};

    static constexpr auto fields() {
        return std::tuple{Field{"deviceId", &ProfileFacts::deviceId}, Field{"server", &ProfileFacts::server},
                          Field{"name", &ProfileFacts::name}, Field{"next", &ProfileFacts::next}};
    }
    bool operator==(const ProfileFacts&) const = default;
};

/// Why a verb has no result: the status to end with, and a line for people.
struct VerbFailure {
    ExitStatus status = ExitStatus::data;
    std::string message;
};
/// A disk that does not do what it is told.
VerbFailure failureOf(const FileError& error);

/// One device on one board, as a folder of files: who it is, its token, its outbox and the board it last knew. The
/// token stands whole in a file of its own (0600) and nowhere else.
///
/// Anybody may read a profile; only the process that holds the lock in `lockPath` changes it. A file that cannot be
/// read is a failure that names it, and stays as it is.
class Profile {
public:
    template <class T>
    using Result = std::expected<T, VerbFailure>;

    /// Reads the folder; one that does not exist is a profile that is on no board. The ports outlive the profile.
    static Result<Profile> open(FileSystem& files, UUIDSource& ids, std::string directory);

    const std::string& directory() const { return directory_; }
    const ProfileFacts& facts() const { return facts_; }
    /// None while the profile is on no board.
    const std::optional<CoupleToken>& token() const { return token_; }

    /// Makes the folder, that it may be locked.
    [[nodiscard]] Result<void> createFolder();
    /// Makes the device's id, where there is none yet, and keeps it.
    [[nodiscard]] Result<void> nameDevice();
    /// The profile is on a board from now on, in place of the one it was on. After an error it is whole, and on one of
    /// the two.
    [[nodiscard]] Result<void> pair(CoupleToken token, std::string server, std::string name);
    /// It is on no board any more. What waits in the outbox stays there, for the day it joins that board again.
    [[nodiscard]] Result<void> unpair();

    std::string lockPath() const { return pathOf("lock"); }
    std::string socketPath() const { return pathOf("socket"); }
    std::string outboxPath(std::string_view coupleId) const { return pathOf("outbox/") + std::string{coupleId}; }

    /// The room's board as this device last knew it; an empty one before the first.
    [[nodiscard]] Result<Board> lastKnownBoard(std::string_view coupleId) const;
    [[nodiscard]] Result<void> saveBoard(std::string_view coupleId, const Board& board);

private:
    Profile(FileSystem& files, UUIDSource& ids, std::string directory)
        : files_(files), ids_(ids), directory_(std::move(directory)) {}

    std::string pathOf(std::string_view name) const { return directory_ + "/" + std::string{name}; }
    static std::string boardName(std::string_view coupleId) { return "board-" + std::string{coupleId} + ".json"; }
    Result<std::optional<std::string>> read(const std::string& path) const;
    Result<void> replace(const std::string& name, std::string_view bytes);
    Result<void> loadFacts();
    Result<void> loadToken();
    Result<void> saveFacts();
    void arrive();

    std::reference_wrapper<FileSystem> files_;
    std::reference_wrapper<UUIDSource> ids_;
    std::string directory_;
    ProfileFacts facts_;
    std::optional<CoupleToken> token_;
};

} // namespace lumaro
