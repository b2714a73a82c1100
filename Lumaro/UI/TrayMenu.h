// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/AppFace.h"

#include <QtCore/QString>

#include <functional>
#include <memory>
#include <optional>

namespace lumaro {

/// What the tray shows. A plain value.
struct TrayState {
    QString status;
    bool showsOnDesktop = true;
    bool hasBoard = false; ///< something can be put up

    bool operator==(const TrayState&) const = default;
};

TrayState trayState(const AppFace& face);

/// The icon in the panel, and its menu. Needs a `QApplication`; where there is no panel, it is silent until one comes.
class TrayMenu {
public:
    /// What people ask for. All are set.
    struct Verbs {
        std::function<void()> quickNote;
        std::function<void()> openBoard; ///< also by a click on the icon
        std::function<void(bool shows)> showOnDesktop;
        std::function<void()> settings;
        std::function<void()> quit;
    };

    explicit TrayMenu(Verbs verbs);
    TrayMenu(const TrayMenu&) = delete;
    TrayMenu& operator=(const TrayMenu&) = delete;
    ~TrayMenu();

    void show(const TrayState& state);

    /// Whether there is a panel that shows icons. Without one, the board's window is the way to everything.
    static bool isThere();

private:
    struct Entries;
    std::unique_ptr<Entries> entries_;
    std::optional<TrayState> shown_;
};

} // namespace lumaro
