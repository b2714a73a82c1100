// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Services/WallpaperDoor.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// Paints the board into files.
class BoardPainter {
public:
    struct Order {
        std::string folder;        ///< where the files go
        std::string name;          ///< that each file's name begins with
        bool isOnePicture = false; ///< of all screens together
        /// What hangs is painted over the person's own picture instead of the board's paper. It may be one that cannot
        /// be read: then there is the paper.
        std::function<std::string(const std::string& screen)> ownPicture = {};
    };
    using Painted = std::function<void(std::expected<std::vector<BoardPicture>, std::string>)>;

    BoardPainter() = default;
    BoardPainter(const BoardPainter&) = delete;
    BoardPainter& operator=(const BoardPainter&) = delete;
    virtual ~BoardPainter() = default;

    /// `then` is called later on this thread, unless `stop` is called before. One order at a time.
    virtual void paint(Order order, Painted then) = 0;
    /// Lets go of all that painting needs.
    virtual void stop() = 0;
};

/// The board as the desktop's wallpaper. The person's own is kept in a file of the profile before the first picture of
/// the board takes its place, and comes back when this ends, after a crash at the next start. Whoever chooses another
/// wallpaper meanwhile keeps it: the board makes way. On the main thread.
class BoardWallpaper {
public:
    /// The board is painted no more often; what changes meanwhile comes with the next picture.
    static constexpr Seconds pause{10};

    enum class State : std::uint8_t {
        off,
        hanging, ///< or about to
        madeWay, ///< the person chose another wallpaper
        failed,  ///< the desktop, or the disk, would not
    };
    /// All outlive this, and the runner ends before the door and the files.
    struct Ports {
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
        FileSystem& files;
        BackgroundRunner& background;
        WallpaperDoor& door;
        BoardPainter& painter;
    };

    /// `folder` is this one's alone. `changed` is told of each new state.
    BoardWallpaper(std::string folder, Ports ports, std::function<void()> changed);
    BoardWallpaper(const BoardWallpaper&) = delete;
    BoardWallpaper& operator=(const BoardWallpaper&) = delete;
    ~BoardWallpaper();

    /// Puts the person's own wallpaper back at once, if a run that crashed left the board in its place. Blocks.
    [[nodiscard]] static std::expected<void, std::string> giveBack(FileSystem& files, WallpaperDoor& door,
                                                                   const std::string& folder);

    [[nodiscard]] State state() const { return state_; }
    /// Hangs the board there, over the person's own picture if that is wished; again to change the latter.
    void hang(WallpaperDesk desk, bool isOverOwn);
    /// Puts the person's own wallpaper back, if the board is in its place, from now or from a run that crashed.
    void putBack();
    /// Something on the board, or of the screens, looks different.
    void boardChanged();
    /// Somebody turns to the desktop: what changed is painted at once.
    void look();
    /// While nobody can look, nothing is painted.
    void setAsleep(bool isAsleep);

private:
    struct Begun;

    void begin(bool isOverOwn);
    void took(std::expected<Begun, std::string> begun);
    void paint();
    void painted(std::expected<std::vector<BoardPicture>, std::string> pictures);
    void become(State state);
    void end(State state, std::string_view why);

    std::string folder_;
    Ports ports_;
    std::function<void()> changed_;
    State state_ = State::off;
    WallpaperDesk desk_ = WallpaperDesk::gnome;
    std::optional<WallpaperSettings> own_; ///< once it is kept
    WallpaperSettings set_;                ///< last, for the board
    bool isOverOwn_ = false;
    bool isAsleep_ = false;
    bool isStale_ = false;
    bool isPainting_ = false;
    std::unique_ptr<BackgroundRunner::Task> task_;
    std::unique_ptr<Sleeper::Wait> pause_;
};

} // namespace lumaro
