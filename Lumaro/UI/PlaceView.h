// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/UI/Board/BoardScene.h"
#include "Lumaro/UI/Board/PlaceWords.h"
#include "Lumaro/UI/PlaceChoices.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// What this person lets the partner see of where they are, for views to show and to set. It changes with the scene,
/// which hears of the application and of the minutes.
class PlaceView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program makes the one there is")
    Q_PROPERTY(bool isShared READ isShared NOTIFY changed)
    Q_PROPERTY(bool isDecided READ isDecided NOTIFY changed)
    /// "neighbourhood" or "block".
    Q_PROPERTY(QString precision READ precision WRITE setPrecision NOTIFY changed)
    /// The person says where they are.
    Q_PROPERTY(bool isByHand READ isByHand NOTIFY changed)
    /// "lisbon, portugal": where they say they are.
    Q_PROPERTY(QString chosen READ chosen NOTIFY changed)
    /// That the clock on the card is not that of the chosen place; empty where it is.
    Q_PROPERTY(QString zoneNote READ zoneNote NOTIFY changed)
    /// The computer does not tell the position, and people can do something about it.
    Q_PROPERTY(bool isOff READ isOff NOTIFY changed)
    /// Why the partner sees no place though it is shared, and what helps; empty when they see one.
    Q_PROPERTY(QString hurdle READ hurdle NOTIFY changed)
    Q_PROPERTY(QString help READ help NOTIFY changed)
    /// What one's own window offers: "where you are" when there is nothing in the way.
    Q_PROPERTY(QString offer READ offer NOTIFY changed)
    /// What the partner sees, to the digit.
    Q_PROPERTY(lumaro::PlaceWords told READ told NOTIFY changed)
    /// The person's own name for the place they are at; empty when they gave it none.
    Q_PROPERTY(QString ownName READ ownName NOTIFY changed)
    // One's hours: the time zone alone.
    Q_PROPERTY(bool sharesHours READ sharesHours NOTIFY changed)
    Q_PROPERTY(bool isHoursDecided READ isHoursDecided NOTIFY changed)
    /// The partner can tell what time it is here.
    Q_PROPERTY(bool areHoursKnown READ areHoursKnown NOTIFY changed)
    /// "Europe/Lisbon", or nothing.
    Q_PROPERTY(QString zone READ zone NOTIFY changed)
    Q_PROPERTY(lumaro::PlaceChoices* choices READ choices CONSTANT)

public:
    /// All outlive the view.
    struct Ports {
        AppModel& app;
        const BoardScene& scene;
        const PlaceTable& towns;
    };

    explicit PlaceView(Ports ports) : app_(ports.app), scene_(ports.scene), choices_(ports.towns) {
        connect(&scene_, &BoardScene::settledChanged, this, &PlaceView::changed);
    }

    bool isShared() const { return state().placeConsent == Consent::yes; }
    bool isDecided() const { return state().placeConsent != Consent::notAsked; }
    QString precision() const;
    bool isByHand() const { return state().chosenPlace.has_value(); }
    QString chosen() const;
    QString zoneNote() const;
    bool isOff() const;
    QString hurdle() const;
    QString help() const;
    QString offer() const;
    PlaceWords told() const { return scene_.ownPlace(); }
    QString ownName() const;
    PlaceChoices* choices() { return &choices_; }
    bool sharesHours() const { return state().hoursConsent == Consent::yes; }
    bool isHoursDecided() const { return state().hoursConsent != Consent::notAsked; }
    bool areHoursKnown() const { return state().ownPresence.zone || (here() && !here()->tz.empty()); }
    QString zone() const;

    Q_INVOKABLE void share(bool shares) { app_.place().share(shares); }
    void setPrecision(const QString& precision);
    /// "i'm in …": the town of that row of `choices`.
    Q_INVOKABLE void choose(int row);
    /// The computer finds the place again.
    Q_INVOKABLE void findForMe() { app_.place().choose(std::nullopt); }
    Q_INVOKABLE void lookAgain() { app_.place().lookAgain(); }
    Q_INVOKABLE void shareHours(bool shares) { app_.hours().share(shares); }
    /// Opens a quick note with that question in it.
    Q_INVOKABLE void askThem(const QString& question) { app_.requestQuickNote(question.toStdString()); }
    /// An empty name forgets it.
    Q_INVOKABLE void rename(const QString& name) { app_.place().rename(name.toStdString()); }

Q_SIGNALS:
    void changed();

private:
    const AppState& state() const { return app_.state(); }
    const std::optional<Here>& here() const { return state().ownPresence.here; }
    PlaceHurdle hurdleNow() const { return placeHurdle(state(), here()); }

    AppModel& app_;
    const BoardScene& scene_;
    PlaceChoices choices_;
};

} // namespace lumaro
