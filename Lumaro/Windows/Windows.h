// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/UI/AppView.h"
#include "Lumaro/UI/Board/BoardScene.h"
#include "Lumaro/UI/Board/PartnerSpeech.h"
#include "Lumaro/UI/DesktopBoards.h"
#include "Lumaro/UI/DesktopView.h"
#include "Lumaro/UI/Editor/EditorView.h"
#include "Lumaro/UI/Editor/PictureExchange.h"
#include "Lumaro/UI/MusicView.h"
#include "Lumaro/UI/PlaceView.h"
#include "Lumaro/UI/SettingsView.h"
#include "Lumaro/UI/TrayMenu.h"
#include "Lumaro/UI/Windows/ScreenList.h"
#include "Lumaro/UI/Windows/WindowKeeper.h"

#include <QtQml/QQmlApplicationEngine>

#include <functional>
#include <memory>

class QQuickWindow;

namespace lumaro {

/// Makes the fonts and the QML of the program known. Once, after the application object.
void prepareWindows();

/// All windows of the application over its model: the board under one's hands, on the desktops, the quick note, and the
/// tray. Needs a `QApplication`; on its thread.
class Windows {
public:
    /// All outlive the windows.
    struct Ports {
        AppModel& app;
        DesktopBoards& boards; ///< which `makeDesktopWindow` makes the windows of
        DesktopView& desktop;
        WallClock& clock;
        Sleeper& sleeper;
        UUIDSource& ids;
        BackgroundRunner& background;
        UserDefaults& defaults;
        LoginItem& loginItem;
        const PlaceTable& towns; ///< what people may say that they are in
    };

    Windows(AppView::Setup setup, Ports ports, std::function<void()> quit);
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    ~Windows();

    /// Whoever listens to `AppModel::onNews` calls this.
    void hear(const AppNews& news);
    /// As the settings do.
    void dress(const QString& appearance, bool isMotionReduced);
    void openBoard();
    void openSettings();
    std::unique_ptr<QQuickWindow> makeDesktopWindow();

    QQmlApplicationEngine& engine() { return engine_; }
    QQuickWindow* boardWindow() const { return boardWindow_.get(); }

private:
    std::unique_ptr<QQuickWindow> make(const char* type, QVariantMap properties);
    /// Somebody closed its window.
    void letGoOfBoard();
    void openQuickNote(const QString& text);
    TrayMenu::Verbs verbs(std::function<void()> quit);

    Ports ports_;
    AppView view_;
    BoardScene scene_;
    EditorView editor_;
    PictureExchange pictures_;
    SettingsView settings_;
    MusicView music_;
    PlaceView place_;
    PartnerSpeech speech_;
    ScreenList screens_;
    TrayMenu tray_;
    QQmlApplicationEngine engine_;
    std::unique_ptr<QQuickWindow> boardWindow_;
    WindowKeeper* boardPlace_ = nullptr; ///< of that window, its child
    std::unique_ptr<QQuickWindow> quickNoteWindow_;
};

} // namespace lumaro
