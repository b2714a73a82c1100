// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Media/MediaCache.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Outbox/ReplaceFile.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Protocol/ImageType.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view orderName = "index";

// The id that the text begins with, and the rest.
std::optional<std::pair<UUID, std::string_view>> idBefore(std::string_view text) {
    const auto id = UUID::parse(text.substr(0, UUID::textSize));
    if (!id) return std::nullopt;
    return std::pair{*id, text.substr(UUID::textSize)};
}

// A line of the index: an id, a space, the file's size.
std::optional<std::pair<UUID, std::uint64_t>> entryIn(std::string_view line) {
    const auto split = idBefore(line);
    if (!split || !split->second.starts_with(' ')) return std::nullopt;
    std::uint64_t size = 0;
    const auto digits = split->second.substr(1);
    const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), size);
    if (fault != std::errc{} || end != digits.data() + digits.size() || size > BoardSpec::maxMediaBytes) {
        return std::nullopt;
    }
    return std::pair{split->first, size};
}

std::string markOf(const UUID& id, std::string_view coupleId) {
    return id.lowerString().append(".").append(coupleId);
}

std::optional<MediaFault> faultOf(std::string_view bytes) {
    if (bytes.size() > BoardSpec::maxMediaBytes) return MediaFault::tooLarge;
    if (!imageTypeOf(bytes)) return MediaFault::notAPicture;
    return std::nullopt;
}

std::unexpected<MediaError> notStored(const FileError& error) {
    return std::unexpected(MediaError{MediaFault::notStored, error.path + ": " + error.message});
}

} // namespace

MediaCache::MediaCache(FileSystem& files, std::string folder, std::uint64_t limitBytes)
    : files_(files), folder_(std::move(folder)), limit_(limitBytes) {
    const auto names = files_.listFiles(folder_);
    if (!names) {
        if (names.error().fault != FileFault::notFound) fault_ = names.error();
        return;
    }
    for (const auto& name : *names) meet(name);
    readOrder();
    for (const auto& [id, entry] : entries_) total_ += entry.size;
}

void MediaCache::meet(const std::string& name) {
    // A crash left it half written.
    if (name.starts_with('.')) static_cast<void>(files_.removeFile(pathOfName(name)));
    const auto split = idBefore(name);
    if (!split) return;
    const auto [id, rest] = *split;
    if (rest.empty()) {
        entries_.emplace(id, Entry{.size = BoardSpec::maxMediaBytes});
    } else if (rest.starts_with('.') && isCoupleId(rest.substr(1))) {
        waiting_.emplace(id, rest.substr(1));
    }
}

void MediaCache::readOrder() {
    const auto text = files_.readFile(pathOfName(std::string{orderName}));
    if (!text) return;
    std::string_view rest = *text;
    while (!rest.empty()) {
        const auto end = std::min(rest.find('\n'), rest.size());
        if (const auto line = entryIn(rest.substr(0, end))) {
            const auto found = entries_.find(line->first);
            if (found != entries_.end()) found->second = {.size = line->second, .used = ++uses_};
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

void MediaCache::writeOrder(const Disk& /*disk*/) {
    std::vector<std::pair<std::uint64_t, std::string>> lines;
    {
        const Index index{indexMutex_};
        for (const auto& [id, entry] : entries_) {
            lines.emplace_back(entry.used, id.lowerString() + " " + std::to_string(entry.size) + "\n");
        }
    }
    std::ranges::sort(lines);
    std::string text;
    for (const auto& [used, line] : lines) text += line;
    // Without it the cache forgets what was used when, and nothing else.
    static_cast<void>(replaceFile(files_, folder_, std::string{orderName}, text));
}

void MediaCache::flush() {
    writeOrder(Disk{diskMutex_});
}

std::expected<void, MediaError> MediaCache::put(const UUID& id, std::string_view bytes) {
    const Disk disk{diskMutex_};
    auto stored = store(disk, id, bytes);
    if (!stored) return stored;
    makeRoom(disk, id);
    writeOrder(disk);
    return {};
}

std::expected<void, MediaError> MediaCache::putForUpload(const UUID& id, std::string_view bytes,
                                                         std::string_view coupleId) {
    const Disk disk{diskMutex_};
    if (auto stored = store(disk, id, bytes); !stored) return stored;
    if (auto marked = replaceFile(files_, folder_, markOf(id, coupleId), {}); !marked) return notStored(marked.error());
    {
        const Index index{indexMutex_};
        waiting_.insert_or_assign(id, std::string{coupleId});
    }
    makeRoom(disk, id);
    writeOrder(disk);
    return {};
}

std::expected<void, MediaError> MediaCache::store(const Disk& /*disk*/, const UUID& id, std::string_view bytes) {
    if (const auto fault = faultOf(bytes)) {
        return std::unexpected(MediaError{*fault, std::to_string(bytes.size()) + " bytes"});
    }
    if (has(id)) {
        touch(id);
        return {};
    }
    if (auto done = replaceFile(files_, folder_, id.lowerString(), bytes); !done) return notStored(done.error());
    const Index index{indexMutex_};
    entries_.emplace(id, Entry{.size = bytes.size(), .used = ++uses_});
    total_ += bytes.size();
    return {};
}

void MediaCache::makeRoom(const Disk& /*disk*/, const UUID& newest) {
    while (const auto oldest = takeOldest(newest)) {
        // One that stays behind is found again at the next start.
        static_cast<void>(files_.removeFile(pathOfName(oldest->lowerString())));
    }
}

std::optional<UUID> MediaCache::takeOldest(const UUID& newest) {
    const Index index{indexMutex_};
    if (total_ <= limit_) return std::nullopt;
    auto oldest = entries_.end();
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
        if (entry->first == newest || waiting_.contains(entry->first)) continue;
        if (oldest == entries_.end() || entry->second.used < oldest->second.used) oldest = entry;
    }
    if (oldest == entries_.end()) return std::nullopt;
    total_ -= oldest->second.size;
    return entries_.extract(oldest).key();
}

FileResult<std::string> MediaCache::read(const UUID& id) {
    const Disk disk{diskMutex_};
    auto bytes = files_.readFile(pathOfName(id.lowerString()));
    const Index index{indexMutex_};
    const auto found = entries_.find(id);
    if (found == entries_.end()) return bytes;
    if (bytes) {
        total_ += bytes->size() - found->second.size;
        found->second = {.size = bytes->size(), .used = ++uses_};
    } else if (bytes.error().fault == FileFault::notFound) {
        // Somebody else removed the file.
        total_ -= found->second.size;
        entries_.erase(found);
    }
    return bytes;
}

FileResult<void> MediaCache::uploaded(const UUID& id) {
    const Disk disk{diskMutex_};
    std::string mark;
    {
        const Index index{indexMutex_};
        const auto found = waiting_.extract(id);
        if (found.empty()) return {};
        mark = markOf(id, found.mapped());
    }
    auto removed = files_.removeFile(pathOfName(mark));
    if (!removed && removed.error().fault == FileFault::notFound) return {};
    return removed;
}

void MediaCache::forget(std::string_view coupleId) {
    // A mark that stays behind is one for a room that this device has left.
    for (const auto& id : waitingFor(coupleId)) static_cast<void>(uploaded(id));
}

std::vector<UUID> MediaCache::waitingFor(std::string_view coupleId) const {
    const Index index{indexMutex_};
    std::vector<UUID> ids;
    for (const auto& [id, couple] : waiting_) {
        if (couple == coupleId) ids.push_back(id);
    }
    return ids;
}

bool MediaCache::has(const UUID& id) const {
    const Index index{indexMutex_};
    return entries_.contains(id);
}

std::optional<std::string> MediaCache::pathOf(const UUID& id) const {
    if (!has(id)) return std::nullopt;
    return pathOfName(id.lowerString());
}

void MediaCache::touch(const UUID& id) {
    const Index index{indexMutex_};
    const auto found = entries_.find(id);
    if (found != entries_.end()) found->second.used = ++uses_;
}

std::uint64_t MediaCache::bytes() const {
    const Index index{indexMutex_};
    return total_;
}

} // namespace lumaro
