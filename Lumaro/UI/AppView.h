// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/UI/AppFace.h"
#include "Lumaro/UI/HomeView.h"

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace lumaro {

/// The application as the pages know it: what it shows, and what people may ask of it. On the main thread.
class AppView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program makes the one there is")
    Q_PROPERTY(lumaro::AppFace face READ face NOTIFY faceChanged)
    Q_PROPERTY(QString folder READ folder CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString suggestedName READ suggestedName CONSTANT)
    Q_PROPERTY(lumaro::HomeView* home READ home CONSTANT)

public:
    struct Setup {
        QString folder; ///< the profile's
        QString version;
        QString suggestedName; ///< what this person is called on this computer; may be empty
    };

    /// All outlive the view.
    AppView(Setup setup, AppModel& app, WallClock& clock, Sleeper& sleeper);

    const AppFace& face() const { return face_; }
    QString folder() const { return setup_.folder; }
    QString version() const { return setup_.version; }
    QString suggestedName() const { return setup_.suggestedName; }
    HomeView* home() { return &home_; }

    /// Whoever listens to `AppModel::onNews` calls this.
    void refresh();

    // Onto a board.
    Q_INVOKABLE void startOurBoard();
    Q_INVOKABLE void joinByCode(const QString& typed);
    Q_INVOKABLE void joinByLink(const QString& text);
    /// 0 is the one who began the board, 1 the other.
    Q_INVOKABLE void chooseOneself(int person);
    /// The answer to `AppFace::inviteQuestion`.
    Q_INVOKABLE void acceptInvite(bool accepts);
    Q_INVOKABLE void forgetPairingFailure();
    /// One of the first run's steps by its name; any other ends the first run.
    Q_INVOKABLE void goTo(const QString& step);
    Q_INVOKABLE void setName(const QString& name);
    Q_INVOKABLE void retryKeychain();
    Q_INVOKABLE void keepSecretsInFile(bool agreed);

    // While on it.
    Q_INVOKABLE void mintCode();
    Q_INVOKABLE static void copyText(const QString& text);
    Q_INVOKABLE void makeLink();
    /// A page that shows the link opens: the partner may have replaced it.
    Q_INVOKABLE void checkLink();
    Q_INVOKABLE void resetLinks();
    Q_INVOKABLE void releasePartner();
    Q_INVOKABLE void leaveBoard();
    Q_INVOKABLE void setShowsOnDesktop(bool shows);
    Q_INVOKABLE void shareSeen(bool shares);
    /// Writes the shown board's JSON; `noticed` tells whether that worked.
    Q_INVOKABLE void exportBoard(const QUrl& file);
    /// The same, where the person says in a dialog.
    Q_INVOKABLE void askWhereToExport();
    Q_INVOKABLE void openFolder() const;

Q_SIGNALS:
    /// A text for people that passes.
    void noticed(const QString& text);
    void faceChanged();

private:
    /// Once a minute, and only while people see a code run out.
    void watchCode();

    Setup setup_;
    AppModel& app_;
    WallClock& clock_;
    Sleeper& sleeper_;
    bool isRetrying_;
    AppFace face_;
    HomeView home_;
    std::unique_ptr<Sleeper::Wait> codeTask_;
};

} // namespace lumaro
