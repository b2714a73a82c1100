// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Windows/Windows.h"

#include "DesignSystem/Fonts.h"
#include "DesignSystem/Furnish.h"
#include "DesignSystem/SystemWords.h"
#include "Lumaro/UI/Text.h"
#include "Lumaro/Windows/FrameLog.h"

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlExtensionPlugin>
#include <QtQuick/QQuickWindow>

#include <utility>

Q_IMPORT_QML_PLUGIN(DesignSystemPlugin)
Q_IMPORT_QML_PLUGIN(WidgetsPlugin)
Q_IMPORT_QML_PLUGIN(Lumaro_UIPlugin)

namespace lumaro {
namespace {

constexpr const char* boardWindowKey = "boardWindow";

template <class Object>
QVariant shared(Object& object) {
    return QVariant::fromValue(&object);
}

} // namespace

void prepareWindows() {
    registerFonts();
    SystemWords::install();
}

Windows::Windows(AppView::Setup setup, Ports ports, std::function<void()> quit)
    : ports_(ports), view_(std::move(setup), ports.app, ports.clock, ports.sleeper),
      scene_({ports.app, ports.clock, ports.sleeper, ports.background,
              [towns = ports.towns](Coordinates point) { return towns.sceneryAt(point); }}),
      editor_(ports.app, ports.clock), pictures_(ports.app, ports.ids, ports.background),
      settings_(ports.defaults, ports.loginItem), music_(ports.app), place_({ports.app, scene_, ports.towns}),
      speech_(ports.app, ports.sleeper), screens_(ports.boards), tray_(verbs(std::move(quit))) {
    furnish(engine_);
    settings_.dress(themeOf(engine_));
    const auto readTemperatures = [this] { scene_.setFahrenheit(settings_.isFahrenheit()); };
    QObject::connect(&settings_, &SettingsView::changed, &scene_, readTemperatures);
    readTemperatures();
    // People change what this program may do while they look at something else.
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &view_, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) ports_.app.becameActive();
        if (state == Qt::ApplicationInactive) ports_.desktop.look();
    });
    QObject::connect(&scene_, &BoardScene::settledChanged, &ports_.desktop, &DesktopView::boardChanged);
    QObject::connect(&settings_, &SettingsView::changed, &ports_.desktop, &DesktopView::boardChanged);
}

Windows::~Windows() {
    if (boardWindow_) QObject::disconnect(boardWindow_.get(), nullptr, &view_, nullptr);
}

TrayMenu::Verbs Windows::verbs(std::function<void()> quit) {
    return {.quickNote = [this] { ports_.app.requestQuickNote(std::nullopt); },
            .openBoard = [this] { openBoard(); },
            .showOnDesktop = [this](bool shows) { ports_.app.desktop().set(shows); },
            .settings = [this] { openSettings(); },
            .quit = std::move(quit)};
}

void Windows::dress(const QString& appearance, bool isMotionReduced) {
    settings_.setAppearance(appearance);
    settings_.setReducesMotion(isMotionReduced);
}

void Windows::hear(const AppNews& news) {
    scene_.hear(news.changed);
    editor_.hear(news);
    pictures_.hear(news.changed);
    music_.hear(news.changed);
    speech_.hear(news);
    // No page shows what a hand does, which changes many times a second.
    if (!news.changed.isOnly(AppChange::editor)) {
        view_.refresh();
        tray_.show(trayState(view_.face()));
    }
    if (news.isBoardWanted) {
        openBoard();
        QMetaObject::invokeMethod(boardWindow_.get(), "showBoard");
    }
    for (const auto& text : news.quickNotes) openQuickNote(qText(text.value_or("")));
}

std::unique_ptr<QQuickWindow> Windows::make(const char* type, QVariantMap properties) {
    const QUrl url{QStringLiteral("qrc:/qt/qml/Lumaro/UI/Windows/%1.qml").arg(QLatin1String{type})};
    QQmlComponent component{&engine_, url};
    if (component.isError()) qFatal("%s", qPrintable(component.errorString()));
    std::unique_ptr<QObject> made{component.createWithInitialProperties(properties)};
    auto* const window = qobject_cast<QQuickWindow*>(made.get());
    if (window == nullptr) qFatal("%s", qPrintable(component.errorString()));
    static_cast<void>(made.release());
    logFrames(*window);
    return std::unique_ptr<QQuickWindow>{window};
}

void Windows::openBoard() {
    if (!boardWindow_) {
        boardWindow_ = make("BoardWindow", {{QStringLiteral("view"), shared(view_)},
                                            {QStringLiteral("scene"), shared(scene_)},
                                            {QStringLiteral("editor"), shared(editor_)},
                                            {QStringLiteral("pictures"), shared(pictures_)},
                                            {QStringLiteral("settings"), shared(settings_)},
                                            {QStringLiteral("music"), shared(music_)},
                                            {QStringLiteral("place"), shared(place_)},
                                            {QStringLiteral("speech"), shared(speech_)},
                                            {QStringLiteral("screens"), shared(screens_)},
                                            {QStringLiteral("desktop"), shared(ports_.desktop)}});
        boardPlace_ = new WindowKeeper{*boardWindow_, ports_.defaults, boardWindowKey};
        QObject::connect(boardWindow_.get(), &QWindow::visibleChanged, &view_, [this](bool isVisible) {
            if (!isVisible) letGoOfBoard();
        });
        QObject::connect(boardWindow_.get(), &QWindow::activeChanged, &view_,
                         [this] { ports_.app.setLooking(boardWindow_ && boardWindow_->isActive()); });
    }
    boardPlace_->show();
}

void Windows::letGoOfBoard() {
    editor_.layDown();
    ports_.app.setLooking(false);
    pictures_.large()->close();
    // Its pictures go with it: most of the time the board is seen on the desktop alone.
    boardWindow_.release()->deleteLater();
}

void Windows::openSettings() {
    openBoard();
    QMetaObject::invokeMethod(boardWindow_.get(), "showPage", Q_ARG(QString, QStringLiteral("settings")));
}

void Windows::openQuickNote(const QString& text) {
    if (!quickNoteWindow_) {
        quickNoteWindow_ = make("QuickNoteWindow", {{QStringLiteral("editor"), shared(editor_)}});
    }
    QMetaObject::invokeMethod(quickNoteWindow_.get(), "ask", Q_ARG(QString, text));
}

std::unique_ptr<QQuickWindow> Windows::makeDesktopWindow() {
    return make("DesktopWindow",
                {{QStringLiteral("scene"), shared(scene_)}, {QStringLiteral("settings"), shared(settings_)}});
}

} // namespace lumaro
