// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Computer/BoardWallpaper.h"
#include "Lumaro/Model/Computer/DesktopSwitch.h"
#include "Lumaro/UI/DesktopBoards.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <string>

namespace lumaro {

/// How the board hangs on this desktop: in windows behind the icons, or as the wallpaper where people prefer that or
/// nothing else is possible. On the main thread.
class DesktopView final : public QObject, public WallpaperController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program makes the one there is")
    /// Where it hangs, or why it does not, in one sentence.
    Q_PROPERTY(QString words READ words NOTIFY changed)
    /// This desktop takes the board as its wallpaper.
    Q_PROPERTY(bool isPictureOffered READ isPictureOffered NOTIFY changed)
    Q_PROPERTY(bool isPicture READ isPicture WRITE setPicture NOTIFY changed)
    Q_PROPERTY(QString pictureWords READ pictureWords NOTIFY changed)
    Q_PROPERTY(bool isOverOwn READ isOverOwn WRITE setOverOwn NOTIFY changed)
    /// Nobody has yet told this person that it hangs there and opens at login.
    Q_PROPERTY(bool isToBeTold READ isToBeTold NOTIFY changed)

public:
    struct Setup {
        std::string folder;  ///< for pictures of the board and what is kept of the person's own
        std::string session; ///< what the desktop calls itself
    };
    /// All outlive this, and the runner ends before the files and the door.
    struct Ports {
        DesktopBoards& boards;
        UserDefaults& defaults;
        BoardWallpaper::Ports wallpaper;
    };

    DesktopView(Setup setup, Ports ports);

    void setEnabled(bool enabled) override;

    QString words() const;
    bool isPictureOffered() const { return desk().has_value(); }
    bool isPicture() const;
    void setPicture(bool isPicture);
    QString pictureWords() const;
    bool isOverOwn() const;
    void setOverOwn(bool isOverOwn);
    bool isToBeTold() const;
    Q_INVOKABLE void beTold();

    void setScreenLocked(bool isLocked);
    /// The board without what is in the hand looks different.
    void boardChanged() { wallpaper_.boardChanged(); }
    /// The person turns from the program's windows to their desktop.
    void look() { wallpaper_.look(); }

Q_SIGNALS:
    void changed();

private:
    std::optional<WallpaperDesk> desk() const;
    bool isPictureWished() const;
    /// For a wallpaper that the person chose.
    bool hasMadeWay() const;
    void hang();

    Setup setup_;
    Ports ports_;
    bool isEnabled_ = false;
    bool hasLookedBack_ = false; ///< at what a run that crashed may have left
    BoardWallpaper wallpaper_;
};

} // namespace lumaro
