// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/TrayMenu.h"

#include "Lumaro/UI/StatusLine.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QPalette>
#include <QSystemTrayIcon>

#include <utility>

namespace lumaro {
namespace {

QColor mixed(const QColor& ink, const QColor& paper, float share) {
    return QColor::fromRgbF(ink.redF() * share + paper.redF() * (1 - share),
                            ink.greenF() * share + paper.greenF() * (1 - share),
                            ink.blueF() * share + paper.blueF() * (1 - share));
}

// The system's light or dark, but for its blue, and a status line that can be read although nobody can click it. A
// panel that draws the menu itself has colours of its own.
QPalette warmed(QPalette palette) {
    palette.setColor(QPalette::Highlight, QColor{QStringLiteral("#e8b887")});
    palette.setColor(QPalette::HighlightedText, QColor{QStringLiteral("#3b2a22")});
    const QColor quiet = mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.7F);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, quiet);
    }
    return palette;
}

} // namespace

TrayState trayState(const AppState& state) {
    return {statusLine(state), state.showsBoardOnDesktop, state.token.has_value() && !state.connectionRejected};
}

struct TrayMenu::Entries {
    explicit Entries(Verbs wanted) : verbs(std::move(wanted)) {
        menu.setPalette(warmed(menu.palette()));
        status = menu.addAction(QString{});
        status->setEnabled(false);
        menu.addSeparator();
        quickNote = menu.addAction(QStringLiteral("quick note"), [this] { verbs.quickNote(); });
        menu.addAction(QStringLiteral("open the board"), [this] { verbs.openBoard(); });
        onDesktop = menu.addAction(QStringLiteral("show on desktop"));
        onDesktop->setCheckable(true);
        // By hand alone: to show how things stand asks for nothing.
        QObject::connect(onDesktop, &QAction::triggered, &icon, [this](bool shows) { verbs.showOnDesktop(shows); });
        menu.addSeparator();
        menu.addAction(QStringLiteral("settings"), [this] { verbs.settings(); });
        menu.addAction(QStringLiteral("quit"), [this] { verbs.quit(); });
        icon.setIcon(QIcon{QStringLiteral(":/lumaro/lumaro.svg")});
        icon.setContextMenu(&menu);
        QObject::connect(&icon, &QSystemTrayIcon::activated, &icon, [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger) verbs.openBoard();
        });
    }

    Verbs verbs;
    QMenu menu;
    QSystemTrayIcon icon;
    QAction* status = nullptr; ///< the menu's, like the others
    QAction* quickNote = nullptr;
    QAction* onDesktop = nullptr;
};

TrayMenu::TrayMenu(Verbs verbs) : entries_(std::make_unique<Entries>(std::move(verbs))) {
    show({});
    entries_->icon.show();
}
TrayMenu::~TrayMenu() = default;

void TrayMenu::show(const TrayState& state) {
    entries_->status->setText(state.status);
    entries_->quickNote->setEnabled(state.hasBoard);
    entries_->onDesktop->setChecked(state.showsOnDesktop);
    entries_->icon.setToolTip(state.status);
}

bool TrayMenu::isThere() {
    return QSystemTrayIcon::isSystemTrayAvailable();
}

} // namespace lumaro
