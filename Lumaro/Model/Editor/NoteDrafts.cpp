// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/NoteDrafts.h"

#include "LumaroCore/BoardModel/BoardJson.h"
#include "LumaroCore/Outbox/ReplaceFile.h"
#include "LumaroCore/Support/Unicode.h"
#include "LumaroCore/Support/Wire.h"

#include <utility>

namespace lumaro {
namespace {

const std::string quickNoteName = "quick-note.txt";

/// At most so many bytes, and no part of a character.
std::string_view startOf(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes) return text;
    auto start = text.substr(0, bytes);
    while (!start.empty() && !isUtf8(start)) start.remove_suffix(1);
    return start;
}

} // namespace

std::optional<std::string> NoteDrafts::read(const std::string& name) {
    auto bytes = ports_.files.readFile(folder_ + "/" + name);
    if (!bytes) {
        if (bytes.error().fault != FileFault::notFound) {
            ports_.log.write(LogLevel::error, "drafts", "a draft cannot be read: " + bytes.error().message);
        }
        return std::nullopt;
    }
    if (bytes->size() > maxBytes || !isUtf8(*bytes)) {
        ports_.log.write(LogLevel::error, "drafts", name + " is no draft; it is left out");
        return std::nullopt;
    }
    return std::move(*bytes);
}

void NoteDrafts::write(const std::string& name, std::string bytes) {
    // The runner does one after the other; only the last one is heard of.
    task_ = inBackground(
        ports_.background,
        [&files = ports_.files, folder = folder_, name, bytes = std::move(bytes)]() -> FileResult<void> {
            if (!bytes.empty()) return replaceFile(files, folder, name, bytes);
            auto gone = files.removeFile(folder + "/" + name);
            if (!gone && gone.error().fault == FileFault::notFound) return {};
            return gone;
        },
        [this](const FileResult<void>& done) {
            if (!done) ports_.log.write(LogLevel::error, "drafts", "a draft is not kept: " + done.error().message);
        });
}

std::optional<BoardItem> NoteDrafts::enter(const std::string& coupleId) {
    boardName_ = coupleId + ".json";
    const auto bytes = read(boardName_);
    if (!bytes) return std::nullopt;
    auto item = Wire::decode<BoardItem>(*bytes);
    if (!item || item->kind() != ItemKind::note || !isFinite(item->center)) {
        ports_.log.write(LogLevel::error, "drafts", boardName_ + " is no note; it is left out");
        return std::nullopt;
    }
    return std::move(*item);
}

void NoteDrafts::keep(const BoardItem* note) {
    if (boardName_.empty()) return;
    auto bytes = note != nullptr ? Wire::encode(*note).value_or(std::string{}) : std::string{};
    if (bytes.size() > maxBytes) return;
    write(boardName_, std::move(bytes));
}

const std::string& NoteDrafts::quickNote() {
    if (!quickNote_) quickNote_ = read(quickNoteName).value_or(std::string{});
    return *quickNote_;
}

void NoteDrafts::keepQuickNote(std::string_view text) {
    text = startOf(text, maxBytes);
    if (quickNote() == text) return;
    quickNote_ = std::string{text};
    wait_ = ports_.sleeper.wait(pause, [this] { flush(); });
}

void NoteDrafts::flush() {
    if (!std::exchange(wait_, nullptr)) return;
    write(quickNoteName, *quickNote_);
}

} // namespace lumaro
