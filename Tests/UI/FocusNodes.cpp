// SPDX-License-Identifier: Apache-2.0
#include "Tests/UI/FocusNodes.h"

#include <QtGui/QAccessible>

namespace lumaro {
namespace {

QString nameOf(QQuickItem& item) {
    auto* const node = QAccessible::queryAccessibleInterface(&item);
    return node == nullptr ? QString{} : node->text(QAccessible::Name).trimmed();
}

void walk(QQuickItem& item, const QString& path, FocusNodes& found) {
    if (!item.isVisible()) return;
    const auto here = path + QLatin1Char{'/'} + QString::fromLatin1(item.metaObject()->className());
    if (item.activeFocusOnTab() && item.isEnabled()) {
        ++found.reached;
        if (nameOf(item).isEmpty()) found.unnamed.append(here);
    }
    const auto children = item.childItems();
    for (auto* const child : children) walk(*child, here, found);
}

} // namespace

FocusNodes focusNodes(QQuickItem& root) {
    QAccessible::setActive(true);
    FocusNodes found;
    walk(root, {}, found);
    return found;
}

} // namespace lumaro
