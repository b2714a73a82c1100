// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// Where the board lives, in the words that people read. A plain value.
struct HomeFace {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString server MEMBER server)
    Q_PROPERTY(bool isSet READ isSet)
    Q_PROPERTY(bool isChangeable MEMBER isChangeable)
    Q_PROPERTY(bool needsServer MEMBER needsServer)
    Q_PROPERTY(bool isAsking MEMBER isAsking)
    Q_PROPERTY(bool isGood MEMBER isGood)
    Q_PROPERTY(QString found MEMBER found)
    Q_PROPERTY(bool canKeepHere MEMBER canKeepHere)
    Q_PROPERTY(bool isKeptHere MEMBER isKeptHere)
    Q_PROPERTY(bool isStarting MEMBER isStarting)
    Q_PROPERTY(QString keeping MEMBER keeping)
    Q_PROPERTY(QString nearby MEMBER nearby)

public:
    QString
        server; ///< "board.example", with its scheme where the way there is not encrypted; "this computer"; or nothing
    bool isChangeable = false; ///< this device is on no board
    bool needsServer = false;  ///< a code waits for the address of its server
    bool isAsking = false;     ///< an address is being looked at
    bool isGood = false;       ///< a room answers there
    QString found;             ///< what was found there, or why nothing can be; empty when nobody has asked

    bool canKeepHere = false; ///< the room's program is on this computer
    bool isKeptHere = false;  ///< this computer keeps a room, or is about to
    bool isStarting = false;
    QString keeping; ///< what keeping it means, or why it does not work
    QString nearby;  ///< whose rooms are in this network: "ada, ben"; empty when none is

    bool isSet() const { return !server.isEmpty(); }
    bool operator==(const HomeFace&) const = default;
};

HomeFace homeFace(const AppState& state);

/// Where the board lives, and what people may say of that. On the main thread.
class HomeView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program makes the one there is")
    Q_PROPERTY(lumaro::HomeFace face READ face NOTIFY changed)

public:
    /// The application outlives the view.
    explicit HomeView(AppModel& app) : app_(app), face_(homeFace(app.state())) {}

    const HomeFace& face() const { return face_; }
    /// Whoever hears of the application calls this.
    void refresh();

    /// Whether a room answers at that address.
    Q_INVOKABLE void check(const QString& typed) { app_.home().check(typed.toStdString()); }
    /// The board lives there from now on.
    Q_INVOKABLE void useChecked() { app_.home().useChecked(); }
    Q_INVOKABLE void forgetCheck() { app_.home().forgetCheck(); }

    /// This computer keeps the room from now on, or no longer.
    Q_INVOKABLE void keepHere(bool keeps) { keeps ? app_.home().keepHere() : app_.home().stopKeeping(); }

Q_SIGNALS:
    void changed();

private:
    AppModel& app_;
    HomeFace face_;
};

} // namespace lumaro
