// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Windows/WindowPlace.h"
#include "LumaroCore/Services/UserDefaults.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <string>
#include <vector>

class QScreen;
class QWindow;

namespace lumaro {

/// Brings a window up where people left it, within a screen that is there, and keeps where they move it. The window is
/// its parent. Where the window system lets no window say where it is (Wayland), its size alone is kept.
class WindowKeeper final : public QObject {
public:
    /// The window comes with its usual size as its size, and the least as its minimum. The settings outlive it.
    WindowKeeper(QWindow& window, UserDefaults& defaults, std::string key);

    /// Shows the window, in front and with the keys; one that is seen stays as it is.
    void show();

private:
    void listenTo(const QScreen& screen);
    void place(const std::optional<WindowPlace>& remembered);
    /// A screen went or changed: what was on it comes back in sight.
    void bringBack();
    void note();
    WindowPlace current() const;

    QWindow& window_;
    UserDefaults& defaults_;
    std::string key_;
    WindowSizes sizes_;
    std::optional<WindowPlace> kept_;
    QTimer rested_;
};

} // namespace lumaro
