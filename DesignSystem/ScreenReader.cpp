// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/ScreenReader.h"

#include <QtGui/QAccessible>

namespace lumaro {
namespace {

void tell(QQuickItem* item, QAccessible::Event what) {
    if (item == nullptr || !QAccessible::isActive()) return;
    QAccessibleEvent event{item, what};
    QAccessible::updateAccessibility(&event);
}

} // namespace

void ScreenReader::moveTo(QQuickItem* item) {
    tell(item, QAccessible::Focus);
}

void ScreenReader::say(QQuickItem* item) {
    tell(item, QAccessible::ObjectShow);
}

} // namespace lumaro
