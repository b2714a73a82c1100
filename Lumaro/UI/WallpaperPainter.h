// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Computer/BoardWallpaper.h"

#include <QtCore/QObject>

#include <functional>
#include <map>
#include <memory>
#include <vector>

class QQuickWindow;
class QScreen;

namespace lumaro {

/// Paints the board as the desktops' windows show it, in windows that nobody sees, one for each screen. They stay until
/// `stop`, so that only what changed is painted anew.
class WallpaperPainter final : public QObject, public BoardPainter {
public:
    /// A screen, and whether the board hangs there.
    struct Place {
        QScreen* screen = nullptr;
        bool isChosen = true;
    };
    /// All outlive the painter.
    struct Ports {
        Sleeper& sleeper;
        BackgroundRunner& background; ///< pictures are put together and written there
        FileSystem& files;
        std::function<std::vector<Place>()> places;
        std::function<std::unique_ptr<QQuickWindow>(QScreen&)> makeWindow;
    };

    explicit WallpaperPainter(Ports ports);
    ~WallpaperPainter() override;

    void paint(Order order, Painted then) override;
    void stop() override;

private:
    bool makeReady(bool isOverOwn);
    void grab(const Order& order);

    Ports ports_;
    Painted then_;
    std::map<QScreen*, std::unique_ptr<QQuickWindow>> windows_;
    std::unique_ptr<Sleeper::Wait> settling_;
    std::unique_ptr<BackgroundRunner::Task> task_;
};

} // namespace lumaro
