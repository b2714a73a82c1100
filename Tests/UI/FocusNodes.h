// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>
#include <QtQuick/QQuickItem>

namespace lumaro {

/// What of a tree of items keys can reach and a screen reader cannot name: the type of each, and those it lies in.
struct FocusNodes {
    int reached = 0; ///< how many keys can reach
    QStringList unnamed;
};

FocusNodes focusNodes(QQuickItem& root);

} // namespace lumaro
