// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/TrayMenu.h"

#include "DesignSystem/Words.h"

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

TrayState trayState(const AppFace& face) {
    return {face.status, face.showsOnDesktop, face.isOnBoard};
}

struct TrayMenu::Entries {
    explicit Entries(Verbs wanted) : verbs(std::move(wanted)) {
        menu.setPalette(warmed(menu.palette()));
        status = menu.addAction(QString{});
        status->setEnabled(false);
        menu.addSeparator();
        quickNote = menu.addAction(Words::tr("quick note"), [this] { verbs.quickNote(); });
        menu.addAction(Words::tr("open the board"), [this] { verbs.openBoard(); });
        onDesktop = menu.addAction(Words::tr("show on desktop"));
        onDesktop->setCheckable(true);
        // `triggered` is of people alone: `show` sets the mark without asking for anything.
        QObject::connect(onDesktop, &QAction::triggered, &icon, [this](bool shows) { verbs.showOnDesktop(shows); });
        menu.addSeparator();
        menu.addAction(Words::tr("settings"), [this] { verbs.settings(); });
        menu.addAction(Words::tr("quit"), [this] { verbs.quit(); });
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

// Each of these is a message to the panel.
void TrayMenu::show(const TrayState& state) {
    if (shown_ == state) return;
    shown_ = state;
    entries_->status->setText(state.status);
    entries_->quickNote->setEnabled(state.hasBoard);
    entries_->onDesktop->setChecked(state.showsOnDesktop);
    entries_->icon.setToolTip(state.status);
}

bool TrayMenu::isThere() {
    return QSystemTrayIcon::isSystemTrayAvailable();
}

} // namespace lumaro
