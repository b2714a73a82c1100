// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/DesktopWords.h"

#include "DesignSystem/Words.h"

#include <utility>

namespace lumaro {

QString hangingWords(DesktopLevel level, const QString& iconProgram, bool isPictureOffered) {
    switch (level) {
    case DesktopLevel::behindIcons: return Words::tr("behind the icons; clicks go through it.");
    case DesktopLevel::bottomMost:
        return Words::tr("this desktop keeps its own picture in front, so our board hangs just behind your windows.");
    case DesktopLevel::iconsInTheWay: {
        const auto who = iconProgram.isEmpty() ? Words::tr("your desktop") : iconProgram;
        const auto why = Words::tr("%1 draws icons and wallpaper as one here, and we won't cover your icons.").arg(who);
        return isPictureOffered ? why + QChar{u' '} + Words::tr("the board can be the wallpaper instead.") : why;
    }
    case DesktopLevel::refused:
        return isPictureOffered
                   ? Words::tr("this desktop lets no program hang behind its icons; the board can be its wallpaper.")
                   : Words::tr("this desktop lets no program hang behind its icons; your board stays in its window.");
    }
    std::unreachable();
}

QString hangingAsPictureWords() {
    return Words::tr("as the wallpaper, behind the icons.");
}

QString pictureWords(BoardWallpaper::State state, DesktopLevel level) {
    switch (state) {
    case BoardWallpaper::State::off:
        return level == DesktopLevel::behindIcons
                   ? Words::tr("a picture that is painted anew when something changes; yours comes back.")
                   : Words::tr("painted anew when something changes; your own picture comes back.");
    case BoardWallpaper::State::hanging: return Words::tr("your own picture is kept, and comes back.");
    case BoardWallpaper::State::madeWay: return Words::tr("you chose another wallpaper, so the board made way.");
    case BoardWallpaper::State::failed: return Words::tr("this desktop wouldn't take it. your own picture is there.");
    }
    std::unreachable();
}

} // namespace lumaro
