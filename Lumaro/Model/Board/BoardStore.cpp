// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/BoardStore.h"

#include "LumaroCore/Outbox/ReplaceFile.h"
#include "LumaroCore/Support/JsonError.h"
#include "LumaroCore/Support/Wire.h"

#include <utility>

namespace lumaro {
namespace {

std::string nameOf(const std::string& coupleId) {
    return coupleId + ".json";
}

} // namespace

std::optional<Board> BoardStore::load(const std::string& coupleId) {
    for (const auto* newer : {&unsaved_, &underWay_}) {
        if (const auto found = newer->find(coupleId); found != newer->end()) return found->second;
    }
    const auto name = nameOf(coupleId);
    const auto text = ports_.files.readFile(folder_ + "/" + name);
    if (!text) {
        if (text.error().fault != FileFault::notFound) {
            log(LogLevel::error, "the board snapshot cannot be read: " + text.error().message);
        }
        return std::nullopt;
    }
    auto board = Wire::decode<Board>(*text);
    if (!board) {
        setAside(name, board.error().path);
        return std::nullopt;
    }
    return std::move(*board);
}

void BoardStore::setAside(const std::string& name, const std::string& why) {
    log(LogLevel::error, "the board snapshot is damaged at " + why + "; set aside");
    const auto path = folder_ + "/" + name;
    if (const auto moved = ports_.files.rename(path, path + ".corrupt"); !moved) {
        log(LogLevel::error, "the damaged snapshot stays: " + moved.error().message);
    }
}

void BoardStore::save(const std::string& coupleId, Board board) {
    unsaved_.insert_or_assign(coupleId, std::move(board));
    if (!wait_ && !task_) writeLater();
}

void BoardStore::flush() {
    wait_.reset();
    // Writes under way are done again: one may fail without this store hearing of it any more.
    unsaved_.merge(underWay_);
    if (!unsaved_.empty()) writeNow();
}

void BoardStore::writeLater() {
    wait_ = ports_.sleeper.wait(pace, [this] {
        wait_.reset();
        writeNow();
    });
}

void BoardStore::writeNow() {
    underWay_ = std::exchange(unsaved_, {});
    task_ = inBackground(
        ports_.background,
        [&files = ports_.files, folder = folder_, boards = underWay_] { return write(files, folder, boards); },
        [this](const std::vector<Unwritten>& faults) { written(faults); });
}

std::vector<BoardStore::Unwritten> BoardStore::write(FileSystem& files, const std::string& folder,
                                                     const Boards& boards) {
    std::vector<Unwritten> faults;
    for (const auto& [coupleId, board] : boards) {
        const auto text = Wire::encode(board);
        if (!text) {
            faults.push_back({.coupleId = coupleId, .why = "it has no JSON", .hasJson = false});
        } else if (const auto done = replaceFile(files, folder, nameOf(coupleId), *text); !done) {
            faults.push_back({.coupleId = coupleId, .why = done.error().message});
        }
    }
    return faults;
}

void BoardStore::written(const std::vector<Unwritten>& faults) {
    task_.reset();
    const bool hasChanged = !unsaved_.empty();
    for (const auto& fault : faults) {
        if (!isFailing_) log(LogLevel::error, "the board snapshot is not written: " + fault.why);
        // Tried again, unless a newer board of the couple waits already.
        if (fault.hasJson) unsaved_.insert(underWay_.extract(fault.coupleId));
    }
    isFailing_ = !faults.empty();
    underWay_.clear();
    if (hasChanged) writeLater();
}

} // namespace lumaro
