// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/Profile.h"

#include "LumaroCore/BoardModel/BoardJson.h"
#include "LumaroCore/Outbox/ReplaceFile.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/Wire.h"

#include <utility>

namespace lumaro {
namespace {

std::unexpected<VerbFailure> failed(const FileError& error) {
    return std::unexpected(failureOf(error));
}

std::unexpected<VerbFailure> unreadable(const std::string& path, const std::string& why) {
    return std::unexpected(VerbFailure{ExitStatus::config, path + " cannot be read: " + why});
}

} // namespace

VerbFailure failureOf(const FileError& error) {
    const auto text = [&]() -> std::string {
        switch (error.fault) {
        case FileFault::noSpace: return "the disk is full";
        case FileFault::denied: return "the system does not let this program write or read here";
        case FileFault::notFound: return "the file or folder is not there";
        case FileFault::interrupted:
        case FileFault::inOut:
        case FileFault::other: return error.message;
        }
        return error.message;
    };
    return {ExitStatus::inOut, error.path + ": " + text()};
}

Profile::Result<Profile> Profile::open(FileSystem& files, UUIDSource& ids, std::string directory) {
    Profile profile{files, ids, std::move(directory)};
    if (auto loaded = profile.loadFacts(); !loaded) return std::unexpected(std::move(loaded.error()));
    if (auto loaded = profile.loadToken(); !loaded) return std::unexpected(std::move(loaded.error()));
    return profile;
}

Profile::Result<std::optional<std::string>> Profile::read(const std::string& path) const {
    auto bytes = files_.get().readFile(path);
    if (bytes) return std::move(*bytes);
    if (bytes.error().fault == FileFault::notFound) return std::nullopt;
    return failed(bytes.error());
}

Profile::Result<void> Profile::loadFacts() {
    const auto path = pathOf("profile.json");
    const auto text = read(path);
    if (!text) return std::unexpected(text.error());
    if (!*text) return {};
    auto facts = Wire::decode<ProfileFacts>(**text);
    if (!facts) return unreadable(path, facts.error().path + ": " + facts.error().message);
    facts_ = std::move(*facts);
    return {};
}

Profile::Result<void> Profile::loadToken() {
    const auto path = pathOf("token");
    const auto text = read(path);
    if (!text) return std::unexpected(text.error());
    if (!*text) return {};
    auto token = CoupleToken::parse(**text);
    // The error's own words hold the text, which may be most of a token.
    if (!token) return unreadable(path, "it holds no join token");
    token_ = std::move(*token);
    arrive();
    return {};
}

// The token has come last; with it the board is the profile's.
void Profile::arrive() {
    if (!facts_.next || !token_ || facts_.next->coupleId != token_->coupleId) return;
    facts_.server = std::move(facts_.next->server);
    facts_.name = std::move(facts_.next->name);
    facts_.next.reset();
}

Profile::Result<void> Profile::replace(const std::string& name, std::string_view bytes) {
    if (auto done = replaceFile(files_.get(), directory_, name, bytes); !done) return failed(done.error());
    return {};
}

Profile::Result<void> Profile::createFolder() {
    if (auto made = files_.get().createDirectories(directory_); !made) return failed(made.error());
    return {};
}

Profile::Result<void> Profile::saveFacts() {
    const auto text = Wire::encode(facts_);
    if (!text) return std::unexpected(VerbFailure{ExitStatus::data, "the name or the server is not UTF-8"});
    return replace("profile.json", *text);
}

Profile::Result<void> Profile::nameDevice() {
    if (!facts_.deviceId.empty()) return {};
    facts_.deviceId = ids_.get().next().lowerString();
    return saveFacts();
}

// The token comes last: a profile with one is whole, and until then it is on the board it was on.
Profile::Result<void> Profile::pair(CoupleToken token, std::string server, std::string name) {
    facts_.next = NextBoard{token.coupleId, std::move(server), std::move(name)};
    if (auto saved = saveFacts(); !saved) return saved;
    if (auto saved = replace("token", token.raw + "\n"); !saved) return saved;
    const auto before = std::exchange(token_, std::move(token));
    arrive();
    // One that nobody has opened yet was never saved.
    if (before && before->coupleId != token_->coupleId) {
        static_cast<void>(files_.get().removeFile(pathOf(boardName(before->coupleId))));
    }
    return {};
}

Profile::Result<void> Profile::unpair() {
    if (!token_) return {};
    // What counts by the token alone must stand without it.
    if (auto saved = saveFacts(); !saved) return saved;
    auto& files = files_.get();
    if (auto gone = files.removeFile(pathOf("token")); !gone) return failed(gone.error());
    // A board that nobody has opened yet was never saved.
    static_cast<void>(files.removeFile(pathOf(boardName(token_->coupleId))));
    token_.reset();
    if (auto synced = files.syncDirectory(directory_); !synced) return failed(synced.error());
    return {};
}

Profile::Result<Board> Profile::lastKnownBoard(std::string_view coupleId) const {
    const auto path = pathOf(boardName(coupleId));
    const auto text = read(path);
    if (!text) return std::unexpected(text.error());
    if (!*text) return Board{};
    auto board = Wire::decode<Board>(**text);
    if (!board) return unreadable(path, board.error().path + ": " + board.error().message);
    return std::move(*board);
}

Profile::Result<void> Profile::saveBoard(std::string_view coupleId, const Board& board) {
    const auto text = Wire::encode(board);
    if (!text) return std::unexpected(VerbFailure{ExitStatus::data, "the board has no JSON"});
    return replace(boardName(coupleId), *text);
}

} // namespace lumaro
