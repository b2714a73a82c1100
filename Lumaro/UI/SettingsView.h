// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DesignSystem/Theme.h"
#include "LumaroCore/Services/LoginItem.h"
#include "LumaroCore/Services/UserDefaults.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtQml/qqmlregistration.h>

#include <string_view>

namespace lumaro {

/// What people may set for this computer, beside what the model keeps itself. Kept as soon as it is set.
class SettingsView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program makes the one there is")
    Q_PROPERTY(bool opensAtLogin READ opensAtLogin WRITE setOpensAtLogin NOTIFY changed)
    Q_PROPERTY(bool notifiesOfItems READ notifiesOfItems WRITE setNotifiesOfItems NOTIFY changed)
    Q_PROPERTY(bool notifiesOfBlocks READ notifiesOfBlocks WRITE setNotifiesOfBlocks NOTIFY changed)
    Q_PROPERTY(bool playsSounds READ playsSounds WRITE setPlaysSounds NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion WRITE setReducesMotion NOTIFY changed)
    /// "follow" the system, "light" or "dark".
    Q_PROPERTY(QString appearance READ appearance WRITE setAppearance NOTIFY changed)
    /// How temperatures are read: "follow" the system, "celsius" or "fahrenheit".
    Q_PROPERTY(QString temperatureUnit READ temperatureUnit WRITE setTemperatureUnit NOTIFY changed)
    /// Rain and snow fall behind the windows on the board.
    Q_PROPERTY(bool weatherMoves READ weatherMoves WRITE setWeatherMoves NOTIFY changed)
    /// Why the last thing set did not take; empty when it did.
    Q_PROPERTY(QString fault READ fault NOTIFY changed)

public:
    /// Both outlive the view.
    SettingsView(UserDefaults& defaults, LoginItem& loginItem) : defaults_(defaults), loginItem_(loginItem) {}

    bool opensAtLogin() const { return loginItem_.isEnabled(); }
    bool notifiesOfItems() const;
    bool notifiesOfBlocks() const;
    bool playsSounds() const;
    bool reducesMotion() const;
    QString appearance() const;
    QString temperatureUnit() const;
    bool isFahrenheit() const;
    bool weatherMoves() const;
    QString fault() const { return fault_; }

    void setOpensAtLogin(bool opens);
    void setNotifiesOfItems(bool notifies);
    void setNotifiesOfBlocks(bool notifies);
    void setPlaysSounds(bool plays);
    void setReducesMotion(bool reduces);
    void setAppearance(const QString& appearance);
    void setTemperatureUnit(const QString& unit);
    void setWeatherMoves(bool moves);

    /// From now on the theme follows these settings and, where they say so, the system.
    void dress(Theme& theme);

Q_SIGNALS:
    void changed();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void tellTheme();
    void keep(std::string_view key, bool value);
    void keep(std::string_view key, const QString& value);

    UserDefaults& defaults_;
    LoginItem& loginItem_;
    QPointer<Theme> theme_;
    QString fault_;
};

} // namespace lumaro
