// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// What this person lets the partner see of their music, for views to show and to set.
class MusicView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program makes the one there is")
    Q_PROPERTY(bool isShared READ isShared NOTIFY changed)
    Q_PROPERTY(bool isDecided READ isDecided NOTIFY changed)
    Q_PROPERTY(bool includesBrowsers READ includesBrowsers WRITE setIncludesBrowsers NOTIFY changed)
    Q_PROPERTY(bool looksForCovers READ looksForCovers WRITE setLooksForCovers NOTIFY changed)

public:
    /// The application outlives the view.
    explicit MusicView(AppModel& app) : app_(app) {}

    bool isShared() const { return app_.state().musicConsent == Consent::yes; }
    /// They have read what would be shared, and said yes or no.
    bool isDecided() const { return app_.state().musicConsent != Consent::notAsked; }
    bool includesBrowsers() const { return app_.state().includesBrowsers; }
    bool looksForCovers() const { return app_.state().looksForCovers; }

    Q_INVOKABLE void share(bool shares) { app_.music().share(shares); }
    void setIncludesBrowsers(bool includes) { app_.music().includeBrowsers(includes); }
    void setLooksForCovers(bool looks) { app_.music().lookForCovers(looks); }

    /// What changed of the application.
    void hear(AppChanges changes) {
        if (changes.has(AppChange::music)) Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();

private:
    AppModel& app_;
};

} // namespace lumaro
