// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/AppView.h"
#include "Lumaro/UI/SettingsView.h"
#include "Tests/Model/AppFixture.h"

#include <QtCore/QObject>
#include <QtQuick/QQuickItem>

#include <memory>

namespace lumaro {

/// One person's application under the pages, with its surroundings in the hands of the tests' QML.
class Bed final : public QObject {
    Q_OBJECT
    Q_PROPERTY(lumaro::AppView* view READ view NOTIFY made)
    Q_PROPERTY(lumaro::SettingsView* settings READ settings NOTIFY made)

public:
    Bed() { make(); }

    AppView* view() const { return view_.get(); }
    SettingsView* settings() const { return settings_.get(); }

    /// A new person at a new computer, whose program has just been started; no invite waits for them.
    Q_INVOKABLE void make();
    /// The same, when the keychain will not open.
    Q_INVOKABLE void makeLocked();
    Q_INVOKABLE void openKeychain();
    /// Answers the oldest request; whether there was one.
    Q_INVOKABLE bool answer(int status, const QString& body);
    /// "POST /v1/couples {...}" of the latest request.
    Q_INVOKABLE QString lastRequest() const;
    Q_INVOKABLE void partnerComes(const QString& name);
    Q_INVOKABLE QString storedName() const;
    Q_INVOKABLE void dress(lumaro::Theme* theme) { settings_->dress(*theme); }
    Q_INVOKABLE void copy(const QString& text) const;
    Q_INVOKABLE int reached(QQuickItem* root) const;
    Q_INVOKABLE QStringList unnamed(QQuickItem* root) const;

Q_SIGNALS:
    void made();

private:
    void build();

    std::unique_ptr<AppFixture> app_;
    std::unique_ptr<AppView> view_;
    std::unique_ptr<SettingsView> settings_;
};

} // namespace lumaro
