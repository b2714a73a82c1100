// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DesignSystem/Tokens.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// The tokens in QML: `Theme.color.ink`, `Theme.size.medium`. What may change while it runs is whether colours
/// are dark and whether motion is reduced; whoever builds the engine sets both.
class Theme final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(lumaro::Palette color READ color NOTIFY changed)
    Q_PROPERTY(lumaro::Metrics size READ size CONSTANT)
    Q_PROPERTY(lumaro::Motion motion READ motion CONSTANT)
    Q_PROPERTY(QString sans READ sans CONSTANT)
    Q_PROPERTY(QString hand READ hand CONSTANT)
    Q_PROPERTY(bool isDark READ isDark WRITE setDark NOTIFY changed)
    Q_PROPERTY(bool isMotionReduced READ isMotionReduced WRITE setMotionReduced NOTIFY changed)

public:
    using QObject::QObject;

    Palette color() const { return palette(isDark_); }
    Metrics size() const { return {}; }
    Motion motion() const { return {}; }
    QString sans() const;
    QString hand() const;
    bool isDark() const { return isDark_; }
    bool isMotionReduced() const { return isMotionReduced_; }
    void setDark(bool isDark);
    void setMotionReduced(bool isReduced);

    /// How the board's paper colour of that name looks by day.
    Q_INVOKABLE QColor backgroundColor(const QString& background) const;
    /// How an ink of the doodles looks now.
    Q_INVOKABLE QColor inkColor(const QString& ink) const;
    Q_INVOKABLE QStringList inks() const;
    /// The inks of letters as notes store them.
    Q_INVOKABLE QStringList textInks() const;
    Q_INVOKABLE QColor textInkColor(const QString& stored) const;

Q_SIGNALS:
    void changed();

private:
    bool isDark_ = false;
    bool isMotionReduced_ = false;
};

} // namespace lumaro
