// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Computer/BoardWallpaper.h"

#include "LumaroCore/Outbox/ReplaceFile.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

const std::string ownName = "own-wallpaper";
// A desktop may read a picture for a while after it was told of the next.
constexpr std::size_t picturesKept = 2;

using Done = std::expected<void, std::string>;
using Kept = std::expected<std::optional<OwnWallpaper>, std::string>;

std::string wordsOf(const FileError& error) {
    return error.path + ": " + error.message;
}

std::string pathIn(const std::string& folder, std::string_view name) {
    return std::string{folder}.append("/").append(name);
}

Kept readKept(FileSystem& files, const std::string& folder) {
    const auto text = files.readFile(pathIn(folder, ownName));
    if (!text && text.error().fault == FileFault::notFound) return std::nullopt;
    if (!text) return std::unexpected(wordsOf(text.error()));
    auto own = readOwnWallpaper(*text);
    if (!own) return std::unexpected("the kept wallpaper: " + own.error());
    return std::move(*own);
}

Done forget(FileSystem& files, const std::string& folder) {
    const auto names = files.listFiles(folder);
    for (const auto& name : names.value_or(std::vector<std::string>{})) {
        if (name.starts_with(boardPictureMark)) static_cast<void>(files.removeFile(pathIn(folder, name)));
    }
    const auto gone = files.removeFile(pathIn(folder, ownName));
    if (!gone && gone.error().fault != FileFault::notFound) return std::unexpected(wordsOf(gone.error()));
    return {};
}

void removeOld(FileSystem& files, const std::string& folder, std::size_t screens) {
    auto names = files.listFiles(folder).value_or(std::vector<std::string>{});
    std::erase_if(names, [](const auto& name) { return !name.starts_with(boardPictureMark); });
    std::ranges::sort(names);
    const auto kept = screens * picturesKept;
    for (std::size_t i = 0; i + kept < names.size(); ++i) {
        static_cast<void>(files.removeFile(pathIn(folder, names[i])));
    }
}

} // namespace

struct BoardWallpaper::Begun {
    WallpaperSettings own;
};

BoardWallpaper::BoardWallpaper(std::string folder, Ports ports, std::function<void()> changed)
    : folder_(std::move(folder)), ports_(ports), changed_(std::move(changed)) {
}
BoardWallpaper::~BoardWallpaper() = default;

std::expected<void, std::string> BoardWallpaper::giveBack(FileSystem& files, WallpaperDoor& door,
                                                          const std::string& folder) {
    const auto kept = readKept(files, folder);
    if (!kept) return std::unexpected(kept.error());
    if (!*kept) return {};
    const auto now = door.read((*kept)->desk);
    if (!now) return std::unexpected(now.error());
    // Unless the person has chosen another since.
    const auto back = settingsBack((*kept)->settings, *now);
    if (!back.empty()) {
        if (auto written = door.write((*kept)->desk, back); !written) return written;
    }
    return forget(files, folder);
}

void BoardWallpaper::become(State state) {
    if (std::exchange(state_, state) != state) changed_();
}

void BoardWallpaper::hang(WallpaperDesk desk, bool isOverOwn) {
    const bool isHanging = state_ == State::hanging && desk == desk_;
    if (isHanging && isOverOwn == isOverOwn_) return;
    isOverOwn_ = isOverOwn;
    desk_ = desk;
    if (isHanging) {
        isStale_ = true;
        return look();
    }
    become(State::hanging);
    // Kept before anything is changed. After a crash it is what was kept then that is the person's own.
    task_ = inBackground(
        ports_.background,
        [&files = ports_.files, &door = ports_.door, folder = folder_, desk]() -> std::expected<Begun, std::string> {
            auto now = door.read(desk);
            if (!now) return std::unexpected(now.error());
            auto kept = readKept(files, folder);
            const bool isOurs = isBoardPicture(*now);
            if (isOurs && kept && *kept && (*kept)->desk == desk) return Begun{(*kept)->settings};
            if (isOurs) return std::unexpected("a board hangs there, and it is not known what was there before it");
            if (auto made = replaceFile(files, folder, ownName, written({desk, *now})); !made) {
                return std::unexpected(wordsOf(made.error()));
            }
            return Begun{std::move(*now)};
        },
        [this](std::expected<Begun, std::string> begun) { took(std::move(begun)); });
}

void BoardWallpaper::took(std::expected<Begun, std::string> begun) {
    if (!begun) return end(State::failed, begun.error());
    own_ = std::move(begun->own);
    set_.clear();
    isStale_ = true;
    paint();
}

void BoardWallpaper::paint() {
    if (!own_ || !isStale_ || isPainting_ || isAsleep_) return;
    isStale_ = false;
    isPainting_ = true;
    // By its name the newest picture is the last.
    BoardPainter::Order order{.folder = folder_,
                              .name = std::string{boardPictureMark} +
                                      std::to_string(Wire::milliseconds(ports_.clock.now())),
                              .isOnePicture = hasOneWallpaper(desk_)};
    if (isOverOwn_) {
        order.ownPicture = [desk = desk_, own = *own_](const std::string& screen) {
            return pictureIn(desk, own, screen);
        };
    }
    ports_.painter.paint(std::move(order), [this](auto pictures) { painted(std::move(pictures)); });
}

void BoardWallpaper::painted(std::expected<std::vector<BoardPicture>, std::string> pictures) {
    if (!pictures) return end(State::failed, pictures.error());
    // What is set for the board then; none where somebody chose another wallpaper.
    using Set = std::expected<std::optional<WallpaperSettings>, std::string>;
    task_ = inBackground(
        ports_.background,
        [&files = ports_.files, &door = ports_.door, folder = folder_, desk = desk_, own = *own_, before = set_,
         pictures = std::move(*pictures)]() -> Set {
            const auto now = door.read(desk);
            if (!now) return std::unexpected(now.error());
            if (hasMadeWay(before, *now)) return std::nullopt;
            // Another one than a moment ago, and no board yet.
            if (!isBoardPicture(*now) && *now != own) {
                if (auto made = replaceFile(files, folder, ownName, written({desk, *now})); !made) {
                    return std::unexpected(wordsOf(made.error()));
                }
            }
            auto wanted = settingsFor(desk, *now, pictures);
            if (const auto done = door.write(desk, wanted); !done) return std::unexpected(done.error());
            removeOld(files, folder, pictures.size());
            return wanted;
        },
        [this](Set done) {
            isPainting_ = false;
            if (!done) return end(State::failed, done.error());
            if (!*done) return end(State::madeWay, "");
            set_ = std::move(**done);
            pause_ = ports_.sleeper.wait(pause, [this] {
                pause_ = nullptr;
                paint();
            });
        });
}

void BoardWallpaper::end(State state, std::string_view why) {
    if (!why.empty()) ports_.log.write(LogLevel::error, "wallpaper", std::string{why});
    putBack();
    become(state);
}

void BoardWallpaper::putBack() {
    ports_.painter.stop();
    pause_ = nullptr;
    own_ = std::nullopt;
    isPainting_ = false;
    isStale_ = false;
    // Also what a run that crashed left there. The runner does one after the other: a picture under way is set before.
    task_ = inBackground(
        ports_.background,
        [&files = ports_.files, &door = ports_.door, folder = folder_] { return giveBack(files, door, folder); },
        [this](const Done& done) {
            if (!done) ports_.log.write(LogLevel::error, "wallpaper", "it is not put back: " + done.error());
        });
    become(State::off);
}

void BoardWallpaper::boardChanged() {
    if (state_ != State::hanging) return;
    isStale_ = true;
    if (!pause_) paint();
}

void BoardWallpaper::look() {
    if (!isAsleep_) paint();
}

void BoardWallpaper::setAsleep(bool isAsleep) {
    isAsleep_ = isAsleep;
    look();
}

} // namespace lumaro
