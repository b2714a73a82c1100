// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Computer/DesktopSwitch.h"
#include "Lumaro/UI/WallpaperPainter.h"
#include "LumaroCore/DesktopKit/OtherDesktops.h"
#include "LumaroCore/Services/UserDefaults.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class QQuickWindow;
class QScreen;

namespace lumaro {

/// The board on the desktop: one window on each screen but those that people left free, at the lowest level that the
/// desktop grants, and none where it would cover icons or other windows. Follows screens, and programs that draw the
/// desktop, as they come, go and change. On the main thread.
///
/// A window that nobody can see, or that is behind the screen's lock, should do nothing: its property `isPaused`
/// says so.
class DesktopBoards final : public QObject, public WallpaperController {
    Q_OBJECT

public:
    /// Makes the board's window for a screen; `DesktopBoards` then sets its place and its level.
    using MakeWindow = std::function<std::unique_ptr<QQuickWindow>(QScreen&)>;
    struct Choice {
        QString screen; ///< its name
        bool isChosen = true;
        bool operator==(const Choice&) const = default;
    };

    /// The settings outlive the boards.
    DesktopBoards(UserDefaults& defaults, MakeWindow make);
    ~DesktopBoards() override;

    void setEnabled(bool enabled) override;

    /// How low boards hang, or why none does: the worst of the wanted screens. None while none is wanted.
    std::optional<DesktopLevel> level() const { return level_; }
    /// The same whether or not boards are wanted.
    DesktopLevel reach() const;
    /// The program whose icons are in the way; empty when nobody's are.
    QString iconProgram() const;
    /// The screens there are. Each is chosen until people leave it free, so one that is plugged in for the first time
    /// is.
    std::vector<Choice> choices() const;
    /// Each screen, and whether it is chosen.
    std::vector<WallpaperPainter::Place> places() const;
    void choose(const QString& screen, bool isChosen);
    void setScreenLocked(bool isLocked);

Q_SIGNALS:
    /// Of the level or the choices.
    void changed();

private:
    struct Board;

    QStringList leftFree() const;
    void leaveFree(QStringList screens);
    void migrate();
    void hang();
    void hangOn(QScreen& screen);
    void tellLevel();
    void pauseAsNeeded(Board& board) const;

    UserDefaults& defaults_;
    MakeWindow make_;
    bool isEnabled_ = false;
    bool isLocked_ = false;
    std::optional<DesktopLevel> level_;
    OtherDesktops others_;
    std::map<QScreen*, std::unique_ptr<Board>> boards_;
};

} // namespace lumaro
