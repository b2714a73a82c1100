// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/ScreenLock.h"

#include <QObject>

#include <utility>

namespace lumaro {

class ScreenLock::Listening final : public QObject {
    Q_OBJECT

public:
    Listening(QDBusConnection bus, std::function<void(bool)> changed) : changed_(std::move(changed)) {
        for (const auto* desktop : {"freedesktop", "gnome", "cinnamon", "mate", "xfce"}) {
            // Whoever sends it, from whatever object: the same saver may speak from two.
            bus.connect(QString{}, QString{}, QStringLiteral("org.%1.ScreenSaver").arg(QLatin1String{desktop}),
                        QStringLiteral("ActiveChanged"), this, SLOT(activeChanged(bool)));
        }
    }

private Q_SLOTS:
    void activeChanged(bool isActive) {
        if (std::exchange(isActive_, isActive) != isActive) changed_(isActive);
    }

private:
    std::function<void(bool)> changed_;
    bool isActive_ = false;
};

ScreenLock::ScreenLock(std::function<void(bool isLocked)> changed, QDBusConnection bus)
    : listening_(std::make_unique<Listening>(std::move(bus), std::move(changed))) {
}
ScreenLock::~ScreenLock() = default;

} // namespace lumaro

#include "Platform/Linux/ScreenLock.moc"
